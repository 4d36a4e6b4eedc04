#include "sources/loading/folder.h"

#include "sources/attributes/index.h"
#include "sources/source.h"

#include <algorithm>
#include <fstream>

namespace plant {

namespace {

std::string startOf(const std::filesystem::path& file) {
    std::string start(startSize, '\0');
    std::ifstream in(file, std::ios::binary);
    in.read(start.data(), static_cast<std::streamsize>(start.size()));
    start.resize(static_cast<std::size_t>(in.gcount()));
    return start;
}

bool isPlantFile(const std::filesystem::path& file) {
    const std::string start = startOf(file);
    const auto formats = sourceFormats();
    return !attributes::isAttributeText(start) &&
           std::any_of(formats.begin(), formats.end(),
                       [&](const SourceFormat& format) { return format.recognises(start, file); });
}

std::vector<std::filesystem::path> filesIn(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        if (entry.is_regular_file(error) && isPlantFile(entry.path())) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files.empty() ? std::vector{folder} : files;
}

}  // namespace

std::vector<std::filesystem::path> filesOfPlant(std::span<const std::filesystem::path> named) {
    std::vector<std::filesystem::path> files;
    for (const std::filesystem::path& path : named) {
        std::error_code error;
        if (std::filesystem::is_directory(path, error)) {
            const std::vector<std::filesystem::path> inside = filesIn(path);
            files.insert(files.end(), inside.begin(), inside.end());
        } else {
            files.push_back(path);
        }
    }
    return files;
}

}  // namespace plant
