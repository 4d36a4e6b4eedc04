// A measurement in a process of its own: its peak of memory is its own, and it leaves nothing behind.
#pragma once

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <type_traits>
#include <unistd.h>

namespace bench {

// The most bytes that were ever resident in this process.
inline double peakBytes() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024;
}

// What `job` returns, run in a child process; throws when it throws there or the child ends otherwise.
template <typename Job>
auto inChildProcess(const char* name, const Job& job) {
    using Result = std::invoke_result_t<Job>;
    static_assert(std::is_trivially_copyable_v<Result>);
    int ends[2];
    if (::pipe(ends) != 0) {
        throw std::runtime_error("no pipe");
    }
    const pid_t child = ::fork();
    if (child == 0) {
        try {
            const Result result = job();
            ::_exit(::write(ends[1], &result, sizeof result) == sizeof result ? 0 : 1);
        } catch (const std::exception& problem) {
            std::fprintf(stderr, "%s: %s\n", name, problem.what());
            ::_exit(1);
        }
    }
    ::close(ends[1]);
    Result result;
    const bool arrived = ::read(ends[0], &result, sizeof result) == sizeof result;
    ::close(ends[0]);
    ::waitpid(child, nullptr, 0);
    if (!arrived) {
        throw std::runtime_error(std::string(name) + " failed");
    }
    return result;
}

}  // namespace bench
