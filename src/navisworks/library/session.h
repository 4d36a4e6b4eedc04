// The scene library, up for the length of a command, and what it says.
//
// A warning is printed and goes into the run report under the object in hand. An error is printed and ends the command:
// the next `check` throws LibraryError. The handler itself throws nothing, since it is called from within the library.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

class HxDbObject;

namespace nv {

class LibraryError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// One at a time.
class LibrarySession {
public:
    LibrarySession();
    ~LibrarySession();
    LibrarySession(const LibrarySession&) = delete;
    LibrarySession& operator=(const LibrarySession&) = delete;

    // False when the library did not come up; nothing else of it may be called then.
    bool isReady() const { return isReady_; }

    // The object whose shape or properties are handed over; null for none. Warnings are told under it.
    static void setCurrentObject(const HxDbObject* object);
    // Throws LibraryError once the library has told an error.
    static void check();

private:
    static void handle(int kind, const char* text);

    bool isReady_ = false;
    const HxDbObject* object_ = nullptr;
    std::string error_;
};

}  // namespace nv
