#include "readers/opening/outputs.h"

#include "readers/eem/objects.h"
#include "readers/hext/folder.h"
#include "readers/mapped_file.h"
#include "readers/max/objects.h"
#include "readers/package/objects.h"
#include "readers/rvm/objects.h"
#include "readers/scene/objects.h"

#include <algorithm>

namespace readers {

namespace {

namespace fs = std::filesystem;

struct Request {
    const fs::path& path;
    ToUtf8 toUtf8;
    const ObjectVisitor& visit;
    Findings& findings;
};

// Bytes that live as long as the file is seen; empty, with a finding, when there are none.
std::string_view bytesOf(const MappedFile& file, const fs::path& path, Findings& findings) {
    if (!file.isGood()) {
        note(findings, path.filename().string(), file.fault());
    }
    return file.bytes();
}

// A file and the one beside it, which has the same name but for its ending.
template <typename Read>
void readPair(const Request& request, const char* ending, Read&& read) {
    const fs::path besidePath = fs::path(request.path).replace_extension(ending);
    const MappedFile file(request.path);
    const MappedFile beside(besidePath);
    const std::string_view bytes = bytesOf(file, request.path, request.findings);
    const std::string_view more = bytesOf(beside, besidePath, request.findings);
    if (file.isGood() && bytes.empty()) {
        note(request.findings, request.path.filename().string(), "it is empty");
    } else if (file.isGood()) {
        read(bytes, more);
    }
}

void readRvm(const Request& r) {
    readPair(r, ".txt", [&r](std::string_view rvm, std::string_view attributes) {
        rvm::readObjects(rvm, attributes, r.visit, r.findings);
    });
}
void readScene(const Request& r) {
    scene::readObjects(r.path, r.visit, r.findings);
}
void readPackage(const Request& r) {
    package::readObjects(r.path, r.visit, r.findings);
}
void readEem(const Request& r) {
    readPair(r, ".json", [&r](std::string_view eem, std::string_view side) {
        eem::readObjects(eem, side, r.toUtf8, r.visit, r.findings);
    });
}
void readMax(const Request& r) {
    readPair(r, ".xml", [&r](std::string_view geometry, std::string_view properties) {
        max::readObjects(geometry, properties, r.toUtf8, r.visit, r.findings);
    });
}

struct Format {
    const char* ending;
    void (*read)(const Request& request);
};
constexpr Format formats[] = {{".rvm", readRvm},        {".nwc", readScene}, {".nwd", readScene}, {".glb", readScene},
                              {".pmodel", readPackage}, {".eem", readEem},   {".orna", readMax}};

std::string endingOf(const fs::path& path) {
    std::string ending = path.extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return ending;
}

}  // namespace

bool readOutput(const fs::path& path, ToUtf8 toUtf8, const ObjectVisitor& visit, Findings& findings) {
    std::error_code error;
    if (fs::is_directory(path, error) && fs::exists(path / "uda.txt", error)) {
        hext::readObjects(path, toUtf8, visit, findings);
        return true;
    }
    const std::string ending = endingOf(path);
    const auto* format = std::find_if(std::begin(formats), std::end(formats),
                                      [&ending](const Format& known) { return ending == known.ending; });
    if (format == std::end(formats)) {
        note(findings, path.filename().string(), "no output by its name");
        return false;
    }
    format->read({path, toUtf8, visit, findings});
    return true;
}

}  // namespace readers
