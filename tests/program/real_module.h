// The program with the real module, in a folder of its own with a copy of the example installation.
#pragma once

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

namespace realmodule {

namespace fs = std::filesystem;

inline const fs::path binaries = TESSARO_BIN_DIR;
inline const fs::path examples = fs::path(TESSARO_SOURCE_DIR) / "examples";

inline std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

inline std::string outputOf(const std::string& command) {
    std::string text;
    std::FILE* pipe = ::popen(command.c_str(), "r");
    char buffer[4096];
    for (std::size_t got; pipe != nullptr && (got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
        text.append(buffer, got);
    }
    if (pipe != nullptr) {
        ::pclose(pipe);
    }
    return text;
}

class RealModule : public testing::Test {
protected:
    RealModule() : folder_(fs::temp_directory_path() / ("tessaro-real-" + std::to_string(::getpid()))) {
        ::unsetenv("TESSARO_MODULE");
        ::unsetenv("TESSARO_ROOT");
        fs::remove_all(folder_);
        fs::create_directories(folder_ / "out");
        fs::copy(examples / "install", root(), fs::copy_options::recursive);
    }
    ~RealModule() override {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    const fs::path& folder() const { return folder_; }
    fs::path root() const { return folder_ / "install"; }
    fs::path out() const { return folder_ / "out"; }
    // Exit status of the program; what it says goes to said().
    int tessaro(const std::string& arguments) {
        const std::string command = "'" + (binaries / "tessaro").string() + "' " + arguments + " >'" +
                                    (folder_ / "stdout").string() + "' 2>'" + (folder_ / "stderr").string() + "'";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    int run(const std::string& command, const std::string& options = {}) {
        return tessaro("run " + command + " --model '" + (examples / "pump-station.json").string() + "' --root '" +
                       root().string() + "' --out '" + out().string() + "' --report '" +
                       (folder_ / "report.json").string() + "' " + options);
    }
    std::string said() const { return readFile(folder_ / "stderr"); }
    std::string report() const { return readFile(folder_ / "report.json"); }

private:
    fs::path folder_;
};

}  // namespace realmodule
