#include "tolmar/file.h"

#include "tolmar/code_page.h"
#include "tolmar/files/part_file.h"
#include "tolmar/host_ui.h"
#include "tolmar/paths.h"
#include "tolmar/protected_files.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"
#include "tolmar/write_all.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tolmar {

namespace {

constexpr std::size_t bufferSize = std::size_t{1} << 20U;

// Less room than this is not worth filling.
constexpr std::size_t textStep = 256;

// Copies a text with its line ends spelled out, to a place with room for twice its size.
char* endLines(std::string_view text, char* to) {
    while (!text.empty()) {
        const void* found = std::memchr(text.data(), '\n', text.size());
        const std::size_t length =
            found == nullptr ? text.size() : static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
        to = std::copy_n(text.data(), length, to);
        if (found == nullptr) {
            return to;
        }
        to = std::copy_n(lineEnd.data(), lineEnd.size(), to);
        text.remove_prefix(length + 1);
    }
    return to;
}

class FileSink final : public Sink {
public:
    explicit FileSink(int file) : file_(file) {}
    ~FileSink() override {
        if (file_ >= 0) {
            ::close(file_);
        }
    }
    bool write(const char* data, std::size_t size) override {
        return writeAll(data, size, [this](const char* at, std::size_t left) { return ::write(file_, at, left); });
    }
    bool writeAt(std::uint64_t offset, const char* data, std::size_t size) override {
        auto place = static_cast<off_t>(offset);
        return writeAll(data, size, [this, &place](const char* at, std::size_t left) {
            const ssize_t written = ::pwrite(file_, at, left, place);
            place += written > 0 ? written : 0;
            return written;
        });
    }
    bool truncate(std::uint64_t offset) override {
        const auto end = static_cast<off_t>(offset);
        return ::ftruncate(file_, end) == 0 && ::lseek(file_, end, SEEK_SET) == end;
    }
    bool close() override {
        const int status = ::close(file_);
        file_ = -1;
        return status == 0;
    }

private:
    int file_;
};

class NullSink final : public Sink {
public:
    bool write(const char*, std::size_t) override { return true; }
    bool writeAt(std::uint64_t, const char*, std::size_t) override { return true; }
    bool truncate(std::uint64_t) override { return true; }
    bool close() override { return true; }
};

std::string reasonOf(int error) {
    switch (error) {
    case 0:
        return "not all of it could be written";
    case EWOULDBLOCK:
        return "another run is writing it";
    default:
        return std::strerror(error);
    }
}

// What TextAppend adds to: of an addition that is not whole nothing stays.
struct Addition {
    std::filesystem::path path;
    off_t start = 0;
    bool isNew = false;

    void takeBack() const {
        std::error_code error;
        if (!std::filesystem::is_regular_file(path, error)) {
            return;
        }
        if ((isNew ? ::unlink(path.c_str()) : ::truncate(path.c_str(), start)) != 0) {
            runReport().fileFailed(path.string(), std::string("cut short and not mended: ") + std::strerror(errno));
        }
    }
};

bool isWrittenDirectly(const std::filesystem::path& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
}

}  // namespace

struct OutputFile::State {
    std::unique_ptr<Sink> sink;
    std::unique_ptr<char[]> buffer;
    std::size_t used = 0;
    std::uint64_t flushed = 0;
    bool text = false;
    bool reported = true;
    bool bad = false;
    bool isDeletedWhenBad = false;
    PartFile part;
    std::optional<Addition> addition;
    std::string name;
    std::string reason;

    // The descriptor to write to; -1 with errno set.
    int openFile(const std::filesystem::path& path, FileMode mode) {
        if (mode != FileMode::TextAppend) {
            return isWrittenDirectly(path) ? ::open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC) : part.open(path);
        }
        struct stat old;
        const bool isNew = ::stat(path.c_str(), &old) != 0;
        const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
        if (file >= 0) {
            std::error_code error;
            addition = Addition{std::filesystem::absolute(path, error), isNew ? 0 : old.st_size, isNew};
        }
        return file;
    }

    void start(std::unique_ptr<Sink> to, FileMode mode) {
        sink = std::move(to);
        text = mode != FileMode::Binary;
        used = 0;
        flushed = 0;
        bad = false;
        isDeletedWhenBad = false;
        reported = !dryRun();
        if (buffer == nullptr) {
            buffer = std::make_unique_for_overwrite<char[]>(bufferSize);
        }
    }

    void fail(std::string why) {
        if (!bad) {
            bad = true;
            reason = std::move(why);
        }
    }

    // Runs one operation of the sink; the first that fails makes the file fail.
    template <typename Operation>
    void attempt(Operation&& operation) {
        errno = 0;
        if (!bad && !operation()) {
            fail(reasonOf(errno));
        }
    }

    void flush() {
        if (used > 0) {
            attempt([this] { return sink->write(buffer.get(), used); });
            flushed += used;
            used = 0;
        }
    }

    void put(const char* data, std::size_t size) {
        if (size > bufferSize - used) {
            flush();
        }
        if (size > bufferSize) {
            attempt([&] { return sink->write(data, size); });
            flushed += size;
            return;
        }
        std::memcpy(buffer.get() + used, data, size);
        used += size;
    }

    void putText(std::string_view data) {
        while (!data.empty()) {
            if (bufferSize - used < textStep) {
                flush();
            }
            const std::size_t now = std::min(data.size(), (bufferSize - used) / 2);
            used = static_cast<std::size_t>(endLines(data.substr(0, now), buffer.get() + used) - buffer.get());
            data.remove_prefix(now);
        }
    }

    void abandon(std::string_view why) {
        if (sink == nullptr) {
            return;
        }
        flush();
        const bool isWhole = !bad;
        fail(std::string(why));
        end(isWhole);
    }

    bool finish() {
        flush();
        end(false);
        return !bad;
    }

    void end(bool isAbandoned) {
        part.keepLock();
        closeSink();
        if (!bad && part.isOpen()) {
            attempt([this] { return part.putInPlace(); });
        }
        if (bad) {
            undo();
        }
        report(isAbandoned);
    }

    // Also that of a file that failed.
    void closeSink() {
        errno = 0;
        if (!sink->close()) {
            fail(reasonOf(errno));
        }
        sink.reset();
    }

    // What stood there before stands there still.
    void undo() {
        if (addition) {
            addition->takeBack();
        }
        if (!part.isOpen()) {
            return;
        }
        if (isDeletedWhenBad) {
            part.remove();
        } else {
            reason += part.setAside();
        }
    }

    void report(bool isAbandoned) const {
        if (!reported) {
            return;
        }
        if (!bad) {
            runReport().fileWritten(name, flushed);
        } else if (isAbandoned) {
            runReport().fileUnfinished(name, reason);
        } else {
            runReport().fileFailed(name, reason);
        }
    }

    // On the way out of a scope that an exception may have ended.
    void abandon() noexcept {
        try {
            abandon("not finished");
        } catch (const std::exception&) {
            // No memory is left to tell it; the part keeps its name.
            sink.reset();
        }
    }
};

OutputFile::OutputFile() : state_(std::make_unique<State>()) {}

OutputFile::OutputFile(std::string_view codePagePath, FileMode mode) : OutputFile() {
    open(codePagePath, mode);
}

OutputFile::OutputFile(std::unique_ptr<Sink> sink, FileMode mode, std::string name) : OutputFile() {
    state_->name = std::move(name);
    state_->start(std::move(sink), mode);
}

OutputFile::~OutputFile() {
    if (state_ != nullptr) {
        state_->abandon();
    }
}

OutputFile::OutputFile(OutputFile&& other) noexcept : state_(std::exchange(other.state_, nullptr)) {}

OutputFile& OutputFile::operator=(OutputFile&& other) noexcept {
    if (this != &other) {
        if (state_ != nullptr) {
            state_->abandon();
        }
        state_ = std::exchange(other.state_, nullptr);
    }
    return *this;
}

bool OutputFile::open(std::string_view codePagePath, FileMode mode) {
    close();
    if (state_ == nullptr) {
        state_ = std::make_unique<State>();
    }
    const std::filesystem::path path = resolvePath(codePagePath);
    state_->name = reportedPath(codePagePath);
    state_->addition.reset();
    if (dryRun()) {
        state_->start(std::make_unique<NullSink>(), mode);
        return true;
    }
    if (const std::string reason = reasonNotToWrite(path); !reason.empty()) {
        state_->bad = false;
        state_->fail(fromUtf8(reason));
        runReport().fileRefused(state_->name, state_->reason);
        return false;
    }
    const int file = state_->openFile(path, mode);
    if (file < 0) {
        state_->bad = false;
        state_->fail(reasonOf(errno));
        runReport().fileFailed(state_->name, state_->reason);
        return false;
    }
    state_->start(std::make_unique<FileSink>(file), mode);
    if (state_->addition) {
        state_->flushed = static_cast<std::uint64_t>(state_->addition->start);
    }
    if (state_->part.isOpen() && state_->part.isStale()) {
        hostUi().print("\n" + state_->name + ".part of a run that did not end is written over\n");
    }
    return true;
}

bool OutputFile::isOpen() const {
    return state_ != nullptr && state_->sink != nullptr;
}

void OutputFile::write(std::string_view data) {
    if (!isOpen() || state_->bad || data.empty()) {
        return;
    }
    if (state_->text) {
        state_->putText(data);
    } else {
        state_->put(data.data(), data.size());
    }
}

void OutputFile::writeLines(std::string_view data) {
    if (isOpen() && !state_->bad && !data.empty()) {
        state_->put(data.data(), data.size());
    }
}

std::uint64_t OutputFile::size() const {
    return state_ == nullptr ? 0 : state_->flushed + state_->used;
}

void OutputFile::writeAt(std::uint64_t offset, std::string_view data) {
    if (!isOpen() || state_->bad) {
        return;
    }
    if (state_->text || offset > size() || data.size() > size() - offset) {
        state_->fail("a place that is not written yet was to be changed");
        return;
    }
    if (offset >= state_->flushed) {
        std::memcpy(state_->buffer.get() + (offset - state_->flushed), data.data(), data.size());
        return;
    }
    state_->flush();
    state_->attempt([&] { return state_->sink->writeAt(offset, data.data(), data.size()); });
}

void OutputFile::truncate(std::uint64_t offset) {
    if (!isOpen() || state_->bad || offset >= size()) {
        return;
    }
    if (offset >= state_->flushed) {
        state_->used = static_cast<std::size_t>(offset - state_->flushed);
        return;
    }
    state_->used = 0;
    state_->flushed = offset;
    state_->attempt([&] { return state_->sink->truncate(offset); });
}

bool OutputFile::failed() const {
    return state_ != nullptr && state_->bad;
}

void OutputFile::fail(std::string_view why) {
    if (isOpen()) {
        state_->fail(std::string(why));
    }
}

void OutputFile::abandon(std::string_view why) {
    if (isOpen()) {
        state_->abandon(why);
    }
}

void OutputFile::deleteWhenFailed() {
    if (isOpen()) {
        state_->isDeletedWhenBad = true;
    }
}

bool OutputFile::close() {
    return !isOpen() || state_->finish();
}

void setFileAside(std::string_view codePagePath, std::string_view why) {
    const std::filesystem::path path = resolvePath(codePagePath);
    const std::string place = dryRun() ? std::string() : renameAside(path, path);
    runReport().fileFailed(reportedPath(codePagePath), std::string(why) + place);
}

bool readFile(std::string_view codePagePath, std::string& bytes) {
    bytes.clear();
    const int file = ::open(resolvePath(codePagePath).c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return false;
    }
    struct stat status;
    std::size_t room = ::fstat(file, &status) == 0 && status.st_size > 0 ? static_cast<std::size_t>(status.st_size) : 0;
    std::size_t used = 0;
    ssize_t got = 1;
    while (got > 0) {
        if (used == bytes.size()) {
            bytes.resize(used + (room > 0 ? room + 1 : bufferSize));
            room = 0;
        }
        got = ::read(file, bytes.data() + used, bytes.size() - used);
        if (got < 0 && errno == EINTR) {
            got = 1;
            continue;
        }
        used += got > 0 ? static_cast<std::size_t>(got) : 0;
    }
    bytes.resize(used);
    ::close(file);
    return got == 0;
}

}  // namespace tolmar
