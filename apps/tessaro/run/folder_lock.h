// One run at a time in a folder that runs write to, by a lock on a hidden file in it. A process that has died holds
// nothing, and the file goes with the lock.
#pragma once

#include <filesystem>
#include <string>

class FolderLock {
public:
    FolderLock() = default;
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    // Makes the folder when it is not there; one that is still empty at the end goes again. Empty, or who holds the
    // folder and what to do, in UTF-8. A folder that takes no lock is used without one: its files tell what fails.
    std::string take(const std::filesystem::path& folder);

private:
    std::filesystem::path folder_;
    int file_ = -1;
    bool isMadeHere_ = false;
};
