#include "yardsticks.h"

#include <algorithm>
#include <cJSON.h>
#include <cstdio>
#include <cstring>
#include <deque>
#include <memory>
#include <simdjson.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bench {
namespace {

namespace od = simdjson::ondemand;

class Bytes {
public:
    explicit Bytes(const std::filesystem::path& file)
        : size_(std::filesystem::file_size(file)), data_(new char[size_ + simdjson::SIMDJSON_PADDING]) {
        std::FILE* in = std::fopen(file.c_str(), "rb");
        if (in == nullptr || std::fread(data_.get(), 1, size_, in) != size_) {
            throw std::runtime_error("cannot read " + file.string());
        }
        std::fclose(in);
        std::memset(data_.get() + size_, 0, simdjson::SIMDJSON_PADDING);
    }
    std::size_t size() const { return size_; }
    const char* data() const { return data_.get(); }
    simdjson::padded_string_view padded() const {
        return simdjson::padded_string_view(data_.get(), size_, size_ + simdjson::SIMDJSON_PADDING);
    }

private:
    std::size_t size_;
    std::unique_ptr<char[]> data_;
};

// Keeps each text as a string of its own.
struct Strings {
    using Text = std::string;
    Text keep(std::string_view text) { return Text(text); }
};

// Keeps each text in one growing block.
struct Arena {
    using Text = std::string_view;
    Text keep(std::string_view text) {
        constexpr std::size_t blockSize = 1 << 20;
        if (left < text.size()) {
            left = std::max(blockSize, text.size());
            blocks.emplace_back(new char[left]);
            next = blocks.back().get();
        }
        char* at = next;
        std::memcpy(at, text.data(), text.size());
        next += text.size();
        left -= text.size();
        return {at, text.size()};
    }
    std::vector<std::unique_ptr<char[]>> blocks;
    char* next = nullptr;
    std::size_t left = 0;
};

template <typename Text>
struct Record {
    std::int64_t id = 0;
    Text className;
    Text name;
    std::vector<std::pair<Text, Text>> texts;
    std::size_t firstNumber = 0;  // in the walk's list of numbers
};

template <typename Keeper>
class Walk {
public:
    std::size_t run(const Bytes& bytes) {
        od::parser parser;
        od::document document = parser.iterate(bytes.padded());
        for (od::field member : document.get_object()) {
            const std::string_view key = member.unescaped_key();
            if (key == "objects") {
                for (od::object object : member.value().get_array()) {
                    Entry& entry = records_.emplace_back();
                    entry.texts.reserve(16);
                    entry.firstNumber = numbers_.size();
                    read(object, entry);
                }
            }
        }
        return records_.size() + numbers_.size();
    }

private:
    using Entry = Record<typename Keeper::Text>;

    void read(od::object object, Entry& entry) {
        for (od::field member : object) {
            const std::string_view key = member.unescaped_key();
            if (key == "id") {
                entry.id = member.value().get_int64();
            } else if (key == "class") {
                entry.className = keeper_.keep(member.value().get_string());
            } else if (key == "name") {
                entry.name = keeper_.keep(member.value().get_string());
            } else {
                value(key, member.value(), entry);
            }
        }
    }

    void value(std::string_view key, od::value v, Entry& entry) {
        switch (v.type()) {
        case od::json_type::object:
            for (od::field member : v.get_object()) {
                const std::string_view inner = member.unescaped_key();
                value(inner, member.value(), entry);
            }
            break;
        case od::json_type::array:
            for (od::value element : v.get_array()) {
                value(key, element, entry);
            }
            break;
        case od::json_type::string:
            entry.texts.emplace_back(keeper_.keep(key), keeper_.keep(v.get_string()));
            break;
        case od::json_type::number:
            numbers_.push_back(v.get_double());
            break;
        default:
            break;
        }
    }

    Keeper keeper_;
    std::deque<Entry> records_;
    std::vector<double> numbers_;
};

}  // namespace

std::size_t readBytes(const std::filesystem::path& file) {
    const Bytes bytes(file);
    std::size_t sum = bytes.size();
    for (std::size_t i = 0; i < bytes.size(); i += 4096) {
        sum += static_cast<unsigned char>(bytes.data()[i]);
    }
    return sum;
}

std::size_t walkIntoStrings(const std::filesystem::path& file) {
    return Walk<Strings>().run(Bytes(file));
}

std::size_t walkIntoArena(const std::filesystem::path& file) {
    return Walk<Arena>().run(Bytes(file));
}

std::size_t parseTree(const std::filesystem::path& file) {
    const Bytes bytes(file);
    cJSON* tree = cJSON_ParseWithLength(bytes.data(), bytes.size());
    if (tree == nullptr) {
        throw std::runtime_error("cJSON refuses " + file.string());
    }
    const std::size_t members = static_cast<std::size_t>(cJSON_GetArraySize(tree));
    cJSON_Delete(tree);
    return members;
}

}  // namespace bench
