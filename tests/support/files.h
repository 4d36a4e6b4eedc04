// Files as texts, and the example's.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

inline std::string fileBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

inline std::string exampleText(const std::string& name) {
    return fileBytes(std::filesystem::path(TESSARO_SOURCE_DIR) / "examples" / name);
}
