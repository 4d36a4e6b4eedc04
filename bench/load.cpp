// Loading of model files beside the yardsticks: bench_load FILE...
//
// Each job runs in a process of its own, which tells its peak of memory, and repeats for a while; the best run counts.
// A row gives MB of file a second of processor time, the ratio to the walk into strings, the peak of memory in file
// sizes, and nanoseconds an object.

#include "plant/model.h"
#include "yardsticks.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

struct Measure {
    double seconds = 0;
    double peakBytes = 0;
    double objects = 0;
};

struct Job {
    const char* name;
    std::size_t (*run)(const std::filesystem::path& file);
};

std::size_t load(const std::filesystem::path& file) {
    const plant::LoadResult result = plant::loadModel(file);
    if (!result) {
        throw std::runtime_error(result.error);
    }
    return plant::objectCount(*result.model);
}

constexpr Job jobs[] = {
    {"plain read", bench::readBytes},
    {"walk into strings", bench::walkIntoStrings},
    {"walk into an arena", bench::walkIntoArena},
    {"cJSON tree", bench::parseTree},
    {"loadModel", load},
};

double processorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

Measure measureHere(const Job& job, const std::filesystem::path& file) {
    constexpr double enough = 1.0;
    constexpr std::size_t fewestRuns = 5;
    Measure result;
    std::vector<double> runs;
    for (double total = 0; runs.size() < fewestRuns || total < enough; total += runs.back()) {
        const double start = processorSeconds();
        result.objects = static_cast<double>(job.run(file));
        runs.push_back(processorSeconds() - start);
    }
    std::nth_element(runs.begin(), runs.begin() + static_cast<std::ptrdiff_t>(runs.size() / 2), runs.end());
    result.seconds = runs[runs.size() / 2];
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    result.peakBytes = static_cast<double>(usage.ru_maxrss) * 1024;
    return result;
}

Measure measure(const Job& job, const std::filesystem::path& file) {
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe");
    }
    const pid_t child = fork();
    if (child == 0) {
        try {
            const Measure result = measureHere(job, file);
            _exit(write(ends[1], &result, sizeof result) == sizeof result ? 0 : 1);
        } catch (const std::exception& problem) {
            std::fprintf(stderr, "%s: %s\n", job.name, problem.what());
            _exit(1);
        }
    }
    close(ends[1]);
    Measure result;
    const bool arrived = read(ends[0], &result, sizeof result) == sizeof result;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    if (!arrived) {
        throw std::runtime_error(std::string(job.name) + " failed");
    }
    return result;
}

void printTable(const std::filesystem::path& file) {
    const auto bytes = static_cast<double>(std::filesystem::file_size(file));
    std::vector<Measure> results;
    for (const Job& job : jobs) {
        results.push_back(measure(job, file));
    }
    const double yardstick = results[1].seconds;
    const double objects = results.back().objects;
    std::printf("%s: %.1f MB, %.0f objects\n", file.filename().c_str(), bytes / 1e6, objects);
    std::printf("%-20s %9s %9s %9s %9s\n", "", "MB/s", "ratio", "peak", "ns/object");
    for (std::size_t i = 0; i < results.size(); ++i) {
        const Measure& one = results[i];
        std::printf("%-20s %9.0f %9.2f %9.2f %9.0f\n", jobs[i].name, bytes / 1e6 / one.seconds, yardstick / one.seconds,
                    one.peakBytes / bytes, one.seconds * 1e9 / objects);
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::fprintf(stderr, "usage: bench_load FILE...\n");
        return 1;
    }
    try {
        for (int i = 1; i < count; ++i) {
            printTable(arguments[i]);
        }
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return 2;
    }
    return 0;
}
