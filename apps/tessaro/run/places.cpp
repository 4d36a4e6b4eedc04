#include "tessaro/run/places.h"

#include "tolmar/protected_files.h"

#include <cerrno>
#include <cstring>
#include <strings.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Place {
    fs::path path;
    const char* role;
};

bool isAttributeText(const fs::path& path) {
    return ::strcasecmp(path.extension().c_str(), ".txt") == 0 || ::strcasecmp(path.extension().c_str(), ".att") == 0;
}

// A folder of models as its files; with a file all that bear its name, since an attribute text is read beside it.
void addModel(const fs::path& model, std::vector<Place>& places) {
    std::error_code error;
    const bool isFolder = fs::is_directory(model, error);
    places.push_back({model, "the model"});
    for (const auto& entry : fs::directory_iterator(isFolder ? model : model.parent_path(), error)) {
        const fs::path& path = entry.path();
        const bool isBeside = isFolder || ::strcasecmp(path.stem().c_str(), model.stem().c_str()) == 0;
        if (isBeside && path != model && (isFolder || isAttributeText(path))) {
            places.push_back({path, "a file of the model"});
        }
    }
}

std::vector<Place> inputsOf(const RunOptions& options) {
    std::vector<Place> places{{options.selectFile, "the file of --select-file"}};
    for (const fs::path& model : options.model) {
        addModel(model, places);
    }
    return places;
}

std::vector<Place> ownFilesOf(const RunOptions& options) {
    return {{options.report, "the file of --report"}, {options.logFile, "the file of --log-file"}};
}

bool isGiven(const fs::path& path) {
    return !path.empty() && path != "-";
}

// Devices and pipes may be named twice.
bool isSameFile(const fs::path& one, const fs::path& other) {
    std::error_code error;
    if (!isGiven(one) || !isGiven(other) || (fs::exists(one, error) && !fs::is_regular_file(one, error))) {
        return false;
    }
    return fs::weakly_canonical(one, error) == fs::weakly_canonical(other, error) || fs::equivalent(one, other, error);
}

std::string notWritable(const fs::path& path, const char* what) {
    return path.string() + ": " + what + " cannot be written (" + std::strerror(errno) +
           "); give another place or the right to write there";
}

std::string faultOfOwnFile(const fs::path& file) {
    std::error_code error;
    if (fs::is_directory(file, error)) {
        return file.string() + ": is a folder; give the name of a file in it";
    }
    if (fs::exists(file, error)) {
        return ::access(file.c_str(), W_OK) == 0 ? "" : notWritable(file, "the file");
    }
    const fs::path folder = file.parent_path();
    if (!fs::is_directory(folder, error)) {
        return file.string() + ": there is no folder " + folder.string() + "; make it, or give another place";
    }
    return ::access(folder.c_str(), W_OK | X_OK) == 0 ? "" : notWritable(folder, "the folder");
}

// The target is made by the run, at whose end the report is written.
bool isInNewTarget(const fs::path& file, const RunOptions& options) {
    std::error_code error;
    return file == options.report && file.parent_path() == options.out && !fs::exists(options.out, error);
}

std::string clashOf(const Place& own, const std::vector<Place>& others) {
    for (const Place& other : others) {
        if (isSameFile(own.path, other.path)) {
            return own.path.string() + ": is " + own.role + " and " + other.role + "; give each a file of its own";
        }
    }
    return {};
}

}  // namespace

std::string faultOfOwnFiles(const RunOptions& options) {
    std::vector<Place> others = inputsOf(options);
    for (const Place& own : ownFilesOf(options)) {
        if (!isGiven(own.path)) {
            continue;
        }
        std::string fault = clashOf(own, others);
        fault = fault.empty() && !isInNewTarget(own.path, options) ? faultOfOwnFile(own.path) : fault;
        if (!fault.empty()) {
            return fault;
        }
        others.push_back(own);
    }
    return {};
}

std::string faultOfTarget(const RunOptions& options) {
    if (options.out.empty() || options.dryRun) {
        return {};
    }
    std::error_code error;
    fs::path folder = options.out;
    while (!fs::exists(folder, error) && folder.has_relative_path()) {
        folder = folder.parent_path();
    }
    if (!fs::is_directory(folder, error)) {
        return folder.string() + ": is no folder; --out names the folder that the files go to";
    }
    return ::access(folder.c_str(), W_OK | X_OK) == 0 ? "" : notWritable(folder, "the folder");
}

void protectPlaces(const RunOptions& options) {
    tolmar::forgetProtectedFiles();
    for (const std::vector<Place>& places : {inputsOf(options), ownFilesOf(options)}) {
        for (const auto& [path, role] : places) {
            if (isGiven(path)) {
                tolmar::protectFile(path, role);
            }
        }
    }
    for (const char* folder : {"plugins", "sys"}) {
        tolmar::protectFilesBelow(options.root / folder, "a file of the installation");
    }
    tolmar::protectFile(options.root / "temp" / "hext" / "config.json", "the configuration of the project");
}
