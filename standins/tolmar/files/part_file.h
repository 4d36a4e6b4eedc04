// A file that is written beside its place, as NAME.part, and put there in one step once it is whole. Until then what
// stood at NAME stays as it was. A part belongs to one writer at a time, by a lock that ends with its process.
#pragma once

#include <filesystem>
#include <string>
#include <utility>

namespace tolmar {

class PartFile {
public:
    PartFile() = default;
    ~PartFile() { release(); }
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    // Opens the part of `place`, empty, for writing; the caller closes the descriptor. -1 with errno set when it
    // cannot, EWOULDBLOCK when somebody else is writing it.
    int open(const std::filesystem::path& place);
    bool isOpen() const { return !part_.empty(); }
    // There was one already, of a run that did not end.
    bool isStale() const { return isStale_; }

    // The lock would go with the descriptor: to be called before that is closed.
    void keepLock();
    // Each ends the part. A NAME.incomplete of an earlier run goes when the whole file comes. False with errno set when
    // the part could not be put in its place; it is there still.
    bool putInPlace();
    // Names it NAME.incomplete and gives what the reason of the failure has to say of it.
    std::string setAside();
    void remove();

private:
    void release();

    std::filesystem::path place_;
    std::filesystem::path part_;
    int file_ = -1;  // not owned
    int lock_ = -1;
    bool isStale_ = false;
};

// Gives a file the name of an incomplete one, NAME.incomplete, and says so for the reason of the failure. Empty when it
// is no regular file or keeps its name.
std::string renameAside(const std::filesystem::path& from, const std::filesystem::path& place);

}  // namespace tolmar
