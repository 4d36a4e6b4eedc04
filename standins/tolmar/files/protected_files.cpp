#include "tolmar/protected_files.h"

#include <map>
#include <sys/stat.h>
#include <utility>

namespace tolmar {

namespace {

namespace fs = std::filesystem;

using Node = std::pair<dev_t, ino_t>;

struct Protected {
    std::map<fs::path, std::string> places;
    std::map<Node, std::string> nodes;
};

Protected& protectedFiles() {
    static Protected files;
    return files;
}

// With links followed as far as the path exists.
fs::path placeOf(const fs::path& file) {
    std::error_code error;
    const fs::path place = fs::weakly_canonical(fs::absolute(file, error), error);
    return error ? file : place;
}

std::string textFor(const fs::path& file, const std::string& role) {
    return "it is " + role + " of this run, " + file.string() + "; choose another folder or name for the output";
}

}  // namespace

void protectFile(const fs::path& file, const std::string& role) {
    struct stat status {};
    const bool exists = ::stat(file.c_str(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode)) {
        return;
    }
    const fs::path place = placeOf(file);
    const std::string text = textFor(place, role);
    protectedFiles().places.emplace(place, text);
    if (exists) {
        protectedFiles().nodes.emplace(Node(status.st_dev, status.st_ino), text);
    }
}

void protectFilesBelow(const fs::path& folder, const std::string& role) {
    std::error_code error;
    for (fs::recursive_directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        protectFile(at->path(), role);
    }
}

void forgetProtectedFiles() {
    protectedFiles() = {};
}

std::string reasonNotToWrite(const fs::path& file) {
    const Protected& files = protectedFiles();
    if (const auto found = files.places.find(placeOf(file)); found != files.places.end()) {
        return found->second;
    }
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        return {};
    }
    const auto found = files.nodes.find(Node(status.st_dev, status.st_ino));
    return found == files.nodes.end() ? std::string() : found->second;
}

}  // namespace tolmar
