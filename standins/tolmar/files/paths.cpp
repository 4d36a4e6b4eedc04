#include "tolmar/paths.h"

#include "tolmar/case_fold.h"
#include "tolmar/code_page.h"
#include "tolmar/protected_files.h"
#include "tolmar/system.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolmar {

namespace {

bool nameExists(const std::string& path) {
    struct stat status;
    return ::lstat(path.c_str(), &status) == 0;
}

std::u16string foldedName(std::string_view utf8) {
    std::u16string wide = utf8ToWide(utf8);
    for (char16_t& unit : wide) {
        unit = foldCase(unit);
    }
    return wide;
}

// The first name in byte order that equals `part` without regard to case; empty when there is none.
std::string matchWithoutCase(const std::string& folder, std::string_view part) {
    std::string best;
    DIR* directory = ::opendir(folder.empty() ? "." : folder.c_str());
    if (directory == nullptr) {
        return best;
    }
    const std::u16string wanted = foldedName(part);
    while (const dirent* entry = ::readdir(directory)) {
        const std::string_view name = entry->d_name;
        if ((best.empty() || name < best) && foldedName(name) == wanted) {
            best = name;
        }
    }
    ::closedir(directory);
    return best;
}

// Walks the parts of a path; once a part has no match, the rest stands as it is.
std::string resolveParts(const std::string& path) {
    std::string resolved = path[0] == '/' ? "/" : "";
    bool matching = true;
    for (std::size_t from = 0; from < path.size();) {
        std::size_t to = path.find('/', from);
        to = to == std::string::npos ? path.size() : to;
        if (to > from) {
            const std::string_view part(path.data() + from, to - from);
            const std::string folder = resolved;
            if (!resolved.empty() && resolved.back() != '/') {
                resolved += '/';
            }
            const std::size_t start = resolved.size();
            resolved += part;
            if (matching && !nameExists(resolved)) {
                const std::string match = matchWithoutCase(folder, part);
                matching = !match.empty();
                resolved.replace(start, std::string::npos, matching ? std::string_view(match) : part);
            }
        }
        from = to + 1;
    }
    return resolved;
}

// Size in bytes of the character at `at`; a second or fourth byte may look like a separator in the Chinese code page.
std::size_t characterSize(std::string_view text, std::size_t at) {
    constexpr bool multiByte = std::string_view(TESSARO_CODE_PAGE) != "UTF-8";
    if (!multiByte || static_cast<unsigned char>(text[at]) < 0x81 || at + 1 >= text.size()) {
        return 1;
    }
    const char second = text[at + 1];
    return second >= '0' && second <= '9' ? 4 : 2;
}

std::size_t lastSeparator(std::string_view path) {
    std::size_t backslash = std::string_view::npos;
    std::size_t slash = std::string_view::npos;
    for (std::size_t at = 0; at < path.size(); at += characterSize(path, at)) {
        if (path[at] == '\\') {
            backslash = at;
        } else if (path[at] == '/') {
            slash = at;
        }
    }
    return backslash != std::string_view::npos ? backslash : slash;
}

}  // namespace

std::filesystem::path resolvePath(std::string_view codePagePath) {
    std::string path = toUtf8(codePagePath);
    for (char& c : path) {
        if (c == '\\') {
            c = '/';
        }
    }
    return path.empty() || nameExists(path) ? path : resolveParts(path);
}

std::string reportedPath(std::string_view codePagePath) {
    const std::filesystem::path path = resolvePath(codePagePath);
    std::error_code error;
    const std::filesystem::path full = std::filesystem::absolute(path, error);
    return fromUtf8((error ? path : full).lexically_normal().string());
}

std::string folderOf(std::string_view codePagePath) {
    const std::size_t at = lastSeparator(codePagePath);
    return std::string(at == std::string_view::npos ? std::string_view() : codePagePath.substr(0, at));
}

std::string fileNameOf(std::string_view codePagePath) {
    const std::size_t at = lastSeparator(codePagePath);
    return std::string(at == std::string_view::npos ? codePagePath : codePagePath.substr(at + 1));
}

bool deleteFile(std::string_view codePagePath) {
    const std::filesystem::path path = resolvePath(codePagePath);
    return !dryRun() && reasonNotToWrite(path).empty() && ::unlink(path.c_str()) == 0;
}

bool copyFile(std::string_view from, std::string_view to) {
    std::error_code error;
    return !dryRun() && std::filesystem::copy_file(resolvePath(from), resolvePath(to),
                                                   std::filesystem::copy_options::overwrite_existing, error);
}

}  // namespace tolmar
