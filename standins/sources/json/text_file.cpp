#include "sources/json/text_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace plant {

namespace {

void removeTarget(const std::filesystem::path& file) {
    std::error_code ignored;
    if (std::filesystem::is_regular_file(file, ignored)) {
        std::filesystem::remove(file, ignored);
    }
}

}  // namespace

bool writeTextFile(const std::filesystem::path& file, const std::function<bool(const TextSink& sink)>& make,
                   std::string& error) {
    std::FILE* target = std::fopen(file.c_str(), "wb");
    int reason = target != nullptr ? 0 : errno;
    bool isWhole = false;
    if (target != nullptr) {
        isWhole = make([&](std::string_view piece) {
            const bool taken = std::fwrite(piece.data(), 1, piece.size(), target) == piece.size();
            reason = taken ? reason : errno;
            return taken;
        });
        const bool closed = std::fclose(target) == 0;
        reason = reason == 0 && !closed ? errno : reason;
    }
    if (reason == 0 && isWhole) {
        return true;
    }
    if (target != nullptr) {
        removeTarget(file);
    }
    if (reason != 0) {
        error = file.string() + ": cannot be written: " + std::strerror(reason);
    }
    return false;
}

}  // namespace plant
