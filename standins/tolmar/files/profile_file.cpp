#include "tolmar/file.h"
#include "tolmar/paths.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"
#include "tolmar/text.h"
#include "tolmar/text/profile_text.h"

#define SI_NO_CONVERSION  // bytes stay as they are; no wide form is needed
#include <SimpleIni.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolmar {

namespace {

// A file that changed so shortly before it was read may change again without a new time stamp.
constexpr std::int64_t settledAfter = 100'000'000;

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

struct FileStamp {
    dev_t device = 0;
    ino_t node = 0;
    off_t size = -1;
    std::int64_t changed = 0;
    bool operator==(const FileStamp&) const = default;
};

FileStamp stampOf(const std::string& path) {
    struct stat status;
    if (::stat(path.c_str(), &status) != 0) {
        return {};
    }
    return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim)};
}

// Once a run: a file that stays out of reach is tried again for every value.
void tellFailed(std::string_view codePagePath, const char* what, int error) {
    const std::vector<WrittenFile>& told = runReport().failedFiles();
    const std::string path = reportedPath(codePagePath);
    if (std::none_of(told.begin(), told.end(), [&](const WrittenFile& file) { return file.path == path; })) {
        runReport().fileFailed(path, std::string(what) + std::strerror(error));
    }
}

std::string_view unquoted(std::string_view value) {
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

// The profile file read last: a tree of a million nodes asks for as many prefixes. A file that has changed is read
// again.
class LastProfile {
public:
    // The first value of a key, without one pair of quotes around it.
    std::optional<std::string_view> value(std::string_view codePagePath, const char* section, const char* key) {
        refresh(codePagePath);
        CSimpleIniA::TNamesDepend values;
        if (!ini_.GetAllValues(section, key, values) || values.empty()) {
            return std::nullopt;
        }
        values.sort(CSimpleIniA::Entry::LoadOrder());
        return unquoted(values.front().pItem);
    }
    void forget() { settled_ = false; }

private:
    void refresh(std::string_view codePagePath) {
        const std::string path = resolvePath(codePagePath).string();
        const FileStamp now = stampOf(path);
        if (now.size < 0 || !settled_ || path != path_ || !(now == stamp_)) {
            read(codePagePath, path, now);
        }
    }

    void read(std::string_view codePagePath, const std::string& path, const FileStamp& now) {
        timespec clock{};
        ::clock_gettime(CLOCK_REALTIME, &clock);
        path_ = path;
        stamp_ = now;
        settled_ = now.size >= 0 && nanoseconds(clock) - now.changed > settledAfter;
        std::string bytes;
        ini_.Reset();
        const bool isRead = readFile(codePagePath, bytes);
        if (!isRead && now.size >= 0) {
            tellFailed(codePagePath, "cannot be read: ", errno);
        }
        bytes = plainProfile(bytes);
        if (!isRead || ini_.LoadData(bytes.data(), bytes.size()) < 0) {
            ini_.Reset();
            settled_ = false;
        }
    }

    // Bytes as they are, several values under one key, no values over several lines.
    CSimpleIniA ini_{false, true, false};
    std::string path_;
    FileStamp stamp_;
    bool settled_ = false;
};

LastProfile& lastProfile() {
    static LastProfile profile;
    return profile;
}

int leadingInteger(std::string_view text) {
    std::size_t at = text.find_first_not_of(" \t");
    const bool negative = at < text.size() && text[at] == '-';
    at += at < text.size() && (text[at] == '-' || text[at] == '+') ? 1 : 0;
    std::int64_t value = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9' && value <= INT_MAX; ++at) {
        value = value * 10 + (text[at] - '0');
    }
    value = std::min<std::int64_t>(value, INT_MAX);
    return static_cast<int>(negative ? -value : value);
}

bool writeWhole(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// Puts a new file in the place of the old one in one step, so that nobody ever sees half of it.
bool replaceFile(const std::filesystem::path& path, std::string_view bytes) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::weakly_canonical(path, error);
    std::string scratch = (error ? path : target).string() + "." + std::string(6, 'X');
    const int file = ::mkostemp(scratch.data(), O_CLOEXEC);
    if (file < 0) {
        return false;
    }
    struct stat old;
    const mode_t mode = ::stat(path.c_str(), &old) == 0 ? old.st_mode & 07777U : 0644U;
    const bool written = writeWhole(file, bytes) && ::fchmod(file, mode) == 0;
    const bool closed = ::close(file) == 0;
    if (written && closed && std::rename(scratch.c_str(), (error ? path : target).c_str()) == 0) {
        return true;
    }
    const int reason = errno;
    ::unlink(scratch.c_str());
    errno = reason;
    return false;
}

bool isPlain(std::string_view text) {
    return text.find_first_of("\r\n") == std::string_view::npos;
}

}  // namespace

std::string getPrivateProfileString(const char* section, const char* key, const char* fallback, int maxLength,
                                    std::string_view codePagePath) {
    const auto value = lastProfile().value(codePagePath, section, key);
    std::string_view result = value ? *value : std::string_view(tolmar::textOrEmpty(fallback));
    return std::string(result.substr(0, static_cast<std::size_t>(std::max(maxLength, 0))));
}

int getPrivateProfileInt(const char* section, const char* key, int fallback, std::string_view codePagePath) {
    const auto value = lastProfile().value(codePagePath, section, key);
    return value ? leadingInteger(*value) : fallback;
}

bool writePrivateProfileString(const char* section, const char* key, const char* value, std::string_view codePagePath) {
    if (section == nullptr || key == nullptr || !isPlain(section) || !isPlain(key) ||
        (value != nullptr && !isPlain(value))) {
        return false;
    }
    if (dryRun()) {
        return true;
    }
    const std::filesystem::path path = resolvePath(codePagePath);
    const auto fail = [codePagePath](const char* what) {
        tellFailed(codePagePath, what, errno);
        return false;
    };
    std::string before;
    if (!readFile(codePagePath, before) && errno != ENOENT) {
        return fail("cannot be read: ");
    }
    const std::string after = withProfileValue(
        before, section, key, value == nullptr ? std::nullopt : std::optional<std::string_view>(value));
    lastProfile().forget();
    return after == before || replaceFile(path, after) || fail("cannot be written: ");
}

}  // namespace tolmar
