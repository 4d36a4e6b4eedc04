#include "tolmar/case_fold.h"
#include "tolmar/code_page.h"
#include "tolmar/paths.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace tolmar {

namespace {

struct StartedProgram {
    pid_t process = 0;
    std::string name;
};

std::vector<StartedProgram>& startedPrograms() {
    static std::vector<StartedProgram> programs;
    return programs;
}

// Started programs read nothing, print to standard error and take signals as any program does.
class SpawnSettings {
public:
    SpawnSettings() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, STDERR_FILENO, STDOUT_FILENO);
        posix_spawnattr_init(&attributes_);
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, SIGINT);
        sigaddset(&signals, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    int spawn(const std::string& program, pid_t& process) const {
        char* const arguments[] = {const_cast<char*>(program.c_str()), nullptr};
        return ::posix_spawn(&process, program.c_str(), &actions_, &attributes_, arguments, environ);
    }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

std::filesystem::path programFile(std::string_view codePagePath) {
    std::error_code error;
    const std::filesystem::path named = resolvePath(codePagePath);
    if (std::filesystem::exists(named, error) || !equalWithoutAsciiCase(named.extension().string(), ".exe")) {
        return named;
    }
    const std::string stem(codePagePath.substr(0, codePagePath.size() - 4));
    for (const char* ending : {".sh", ""}) {
        std::filesystem::path candidate = resolvePath(stem + ending);
        if (std::filesystem::is_regular_file(candidate, error)) {
            return candidate;
        }
    }
    return named;
}

std::string endOf(int status) {
    if (WIFSIGNALED(status)) {
        return "ended by signal " + std::to_string(WTERMSIG(status));
    }
    return "ended with status " + std::to_string(WEXITSTATUS(status));
}

}  // namespace

bool setCurrentDirectory(std::string_view codePagePath) {
    return ::chdir(resolvePath(codePagePath).c_str()) == 0;
}

bool startProgram(std::string_view codePagePath) {
    if (dryRun()) {
        return false;
    }
    const std::filesystem::path program = programFile(codePagePath);
    pid_t process = 0;
    const int error = SpawnSettings().spawn(program.string(), process);
    if (error != 0) {
        runReport().passedOver(0, codePagePath, "program",
                               std::string("could not be started: ") + std::strerror(error));
        return false;
    }
    startedPrograms().push_back({process, fromUtf8(program.filename().string())});
    return true;
}

int waitForStartedPrograms() {
    int failed = 0;
    for (const StartedProgram& program : startedPrograms()) {
        int status = 0;
        pid_t ended = 0;
        do {
            ended = ::waitpid(program.process, &status, 0);
        } while (ended < 0 && errno == EINTR);
        if (ended != program.process || status != 0) {
            ++failed;
            runReport().passedOver(0, program.name, "program", endOf(status));
        }
    }
    startedPrograms().clear();
    return failed;
}

}  // namespace tolmar
