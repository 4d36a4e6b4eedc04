#include "shape_store.h"

#include "content_hash.h"
#include "json_writer.h"
#include "text_cursor.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

static_assert(std::endian::native == std::endian::little, "the buffers of a scene are little-endian");

namespace nwcreate {

namespace {

constexpr std::uint32_t shortType = 5123;
constexpr std::uint32_t intType = 5125;
constexpr std::uint32_t vertexTarget = 34962;
constexpr std::uint32_t indexTarget = 34963;
constexpr std::uint64_t vertexSize = 12;
// The index 0xFFFF has a meaning of its own for some graphic systems.
constexpr std::size_t mostShortVertices = 0xFFFF;

// Of the bytes kept in memory.
constexpr std::size_t blockSize = std::size_t{1} << 20U;
constexpr std::size_t mostBlocks = 8;
constexpr std::size_t mostOfOne = 512;

bool isShort(std::size_t vertexCount) {
    return vertexCount <= mostShortVertices;
}

std::string_view bytesOf(std::span<const float> values) {
    return {reinterpret_cast<const char*>(values.data()), values.size_bytes()};
}

// The indices as they stand in the buffer; valid until the next call and as long as they are.
std::string_view packIndices(std::span<const std::uint32_t> indices, bool asShort) {
    if (!asShort) {
        return {reinterpret_cast<const char*>(indices.data()), indices.size_bytes()};
    }
    if (indices.empty()) {
        return "";
    }
    static std::vector<std::uint16_t> narrow;
    if (narrow.size() < indices.size()) {
        narrow.resize(indices.size());
    }
    std::transform(indices.begin(), indices.end(), narrow.begin(),
                   [](std::uint32_t index) { return static_cast<std::uint16_t>(index); });
    return {reinterpret_cast<const char*>(narrow.data()), indices.size() * sizeof(std::uint16_t)};
}

// Shapes of the same vertices hardly ever differ in the middle of their indices alone.
std::uint64_t hashOf(std::string_view vertices, std::string_view indices) {
    constexpr std::size_t sample = 64;
    const std::size_t end = std::min(indices.size(), sample);
    const std::uint64_t ends =
        contentHash(indices.substr(0, end), contentHash(indices.substr(indices.size() - end), 0));
    return contentHash(vertices, ends + indices.size());
}

struct Range {
    std::array<float, 3> low;
    std::array<float, 3> high;
};

// Four vertices at a time suit the processor.
Range rangeOf(std::span<const float> positions) {
    constexpr std::size_t step = 12;
    float low[step];
    float high[step];
    for (std::size_t k = 0; k < step; ++k) {
        low[k] = high[k] = positions[k % 3];
    }
    std::size_t i = 0;
    for (; i + step <= positions.size(); i += step) {
        for (std::size_t k = 0; k < step; ++k) {
            const float value = positions[i + k];
            low[k] = value < low[k] ? value : low[k];
            high[k] = value > high[k] ? value : high[k];
        }
    }
    for (std::size_t k = 0; i + k < positions.size(); ++k) {
        low[k] = std::min(low[k], positions[i + k]);
        high[k] = std::max(high[k], positions[i + k]);
    }
    Range range;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        range.low[axis] = std::min({low[axis], low[axis + 3], low[axis + 6], low[axis + 9]});
        range.high[axis] = std::max({high[axis], high[axis + 3], high[axis + 6], high[axis + 9]});
    }
    return range;
}

void putNumbers(TextCursor& json, const std::array<float, 3>& numbers) {
    json.put("[").number(numbers[0]).put(",").number(numbers[1]).put(",").number(numbers[2]).put("]");
}

}  // namespace

std::uint32_t ShapeStore::EarlyBytes::keep(std::string_view first, std::string_view second) {
    const std::size_t size = first.size() + second.size();
    if (size > mostOfOne) {
        return none;
    }
    if (blocks_.empty() || used_ + size > blockSize) {
        if (blocks_.size() == mostBlocks) {
            return none;
        }
        blocks_.push_back(std::make_unique_for_overwrite<char[]>(blockSize));
        used_ = 0;
    }
    char* to = blocks_.back().get() + used_;
    std::memcpy(to, first.data(), first.size());
    std::memcpy(to + first.size(), second.data(), second.size());
    const std::size_t place = (blocks_.size() - 1) * blockSize + used_;
    used_ += size;
    return static_cast<std::uint32_t>(place);
}

bool ShapeStore::EarlyBytes::equals(std::uint32_t place, std::string_view first, std::string_view second) const {
    const char* there = blocks_[place / blockSize].get() + place % blockSize;
    return std::memcmp(there, first.data(), first.size()) == 0 &&
           std::memcmp(there + first.size(), second.data(), second.size()) == 0;
}

struct ShapeStore::Buffer {
    explicit Buffer(const std::string& folder) : vertices(folder), indices(folder) {}
    std::uint64_t size() const { return vertices.size() + indices.size(); }

    Spool vertices;
    Spool indices;
    std::uint32_t vertexView = ShapeAccessors::none;
    std::uint32_t indexView = ShapeAccessors::none;
};

struct ShapeStore::Packed {
    std::string_view vertices;
    std::string_view indices;
    std::uint32_t vertexCount = 0;
    std::uint32_t indexCount = 0;
};

ShapeStore::ShapeStore(std::string spoolFolder, std::uint64_t bufferLimit)
    : folder_(std::move(spoolFolder)), bufferLimit_(bufferLimit), accessorJson_(folder_) {}

ShapeStore::~ShapeStore() = default;

std::uint32_t ShapeStore::add(std::span<const float> positions, std::span<const std::uint32_t> indices) {
    const std::size_t vertexCount = positions.size() / 3;
    const Packed packed{bytesOf(positions), packIndices(indices, isShort(vertexCount)),
                        static_cast<std::uint32_t>(vertexCount), static_cast<std::uint32_t>(indices.size())};
    const auto number = static_cast<std::uint32_t>(shapes_.size());
    const std::uint64_t hash = hashOf(packed.vertices, packed.indices);
    std::uint32_t& first = firstOfHash_[hash];
    const std::uint32_t known = find(first, packed);
    if (known != ShapeAccessors::none) {
        return known;
    }
    Buffer& buffer = roomFor(packed.vertices.size() + packed.indices.size());
    if (!isShort(vertexCount) && buffer.indices.size() % sizeof(std::uint32_t) != 0) {
        buffer.indices.append(std::string_view("\0\0", 2));
    }
    Shape shape{buffer.vertices.size(),
                buffer.indices.size(),
                packed.vertexCount,
                packed.indexCount,
                static_cast<std::uint32_t>(buffers_.size() - 1),
                accessorCount_};
    shape.early = early_.keep(packed.vertices, packed.indices);
    shape.next = std::exchange(first, number);
    buffer.vertices.append(packed.vertices);
    buffer.indices.append(packed.indices);
    shapes_.push_back(shape);
    writeAccessors(shape, positions);
    return number;
}

std::uint32_t ShapeStore::find(std::uint32_t first, const Packed& packed) {
    std::uint32_t at = first;
    while (at != ShapeAccessors::none && !isEqual(shapes_[at], packed)) {
        at = shapes_[at].next;
    }
    return at;
}

bool ShapeStore::isEqual(const Shape& shape, const Packed& packed) {
    if (shape.vertexCount != packed.vertexCount || shape.indexCount != packed.indexCount) {
        return false;
    }
    if (shape.early != EarlyBytes::none) {
        return early_.equals(shape.early, packed.vertices, packed.indices);
    }
    Buffer& buffer = *buffers_[shape.buffer];
    return buffer.vertices.equals(shape.vertexOffset, packed.vertices) &&
           buffer.indices.equals(shape.indexOffset, packed.indices);
}

ShapeStore::Buffer& ShapeStore::roomFor(std::uint64_t size) {
    constexpr std::uint64_t mostPadding = 4;
    if (!buffers_.empty() && buffers_.back()->size() + size + mostPadding > bufferLimit_) {
        buffers_.back()->vertices.settle();
        buffers_.back()->indices.settle();
        buffers_.push_back(std::make_unique<Buffer>(folder_));
    } else if (buffers_.empty()) {
        buffers_.push_back(std::make_unique<Buffer>(folder_));
    }
    return *buffers_.back();
}

std::uint32_t ShapeStore::viewOf(std::uint32_t& view) {
    if (view == ShapeAccessors::none) {
        view = viewCount_++;
    }
    return view;
}

// {"bufferView":V,"byteOffset":N,"componentType":5126,"count":N,"type":"VEC3","min":[...],"max":[...]}, and for the
// indices the same with "SCALAR", without the range.
void ShapeStore::writeAccessors(const Shape& shape, std::span<const float> positions) {
    constexpr std::size_t mostRoom = 1024;
    Buffer& buffer = *buffers_[shape.buffer];
    TextCursor json(accessorJson_.room(mostRoom));
    json.put(accessorCount_ == 0 ? "{" : ",{").put(R"("bufferView":)").count(viewOf(buffer.vertexView));
    json.put(R"(,"byteOffset":)").count(shape.vertexOffset).put(R"(,"componentType":5126,"count":)");
    json.count(shape.vertexCount).put(R"(,"type":"VEC3","min":)");
    const Range range = rangeOf(positions);
    putNumbers(json, range.low);
    json.put(R"(,"max":)");
    putNumbers(json, range.high);
    json.put("}");
    ++accessorCount_;
    if (shape.indexCount != 0) {
        json.put(R"(,{"bufferView":)").count(viewOf(buffer.indexView));
        json.put(R"(,"byteOffset":)").count(shape.indexOffset).put(R"(,"componentType":)");
        json.count(isShort(shape.vertexCount) ? shortType : intType);
        json.put(R"(,"count":)").count(shape.indexCount).put(R"(,"type":"SCALAR"})");
        ++accessorCount_;
    }
    accessorJson_.keep(json.at());
}

ShapeAccessors ShapeStore::accessors(std::uint32_t shape) const {
    const Shape& found = shapes_[shape];
    return {found.firstAccessor, found.indexCount == 0 ? ShapeAccessors::none : found.firstAccessor + 1};
}

std::uint64_t ShapeStore::bufferSize(std::size_t buffer) const {
    return buffers_[buffer]->size();
}

std::uint64_t ShapeStore::totalSize() const {
    std::uint64_t size = 0;
    for (const std::unique_ptr<Buffer>& buffer : buffers_) {
        size += buffer->size();
    }
    return size;
}

std::string ShapeStore::viewJson() const {
    std::vector<std::string> views(viewCount_);
    for (std::size_t i = 0; i < buffers_.size(); ++i) {
        const Buffer& buffer = *buffers_[i];
        JsonWriter vertices(views[buffer.vertexView]);
        vertices.beginObject().key("buffer").count(i).key("byteLength").count(buffer.vertices.size());
        vertices.key("byteStride").count(vertexSize).key("target").count(vertexTarget).endObject();
        if (buffer.indexView != ShapeAccessors::none) {
            JsonWriter indices(views[buffer.indexView]);
            indices.beginObject().key("buffer").count(i).key("byteOffset").count(buffer.vertices.size());
            indices.key("byteLength").count(buffer.indices.size()).key("target").count(indexTarget).endObject();
        }
    }
    std::string all;
    JsonWriter json(all);
    for (const std::string& view : views) {
        json.ready(view);
    }
    return all;
}

bool ShapeStore::copyBuffer(std::size_t buffer, tolmar::OutputFile& file) {
    return buffers_[buffer]->vertices.copyTo(file) && buffers_[buffer]->indices.copyTo(file);
}

std::string ShapeStore::failure() const {
    for (const std::unique_ptr<Buffer>& buffer : buffers_) {
        if (!buffer->vertices.failure().empty() || !buffer->indices.failure().empty()) {
            return buffer->vertices.failure().empty() ? buffer->indices.failure() : buffer->vertices.failure();
        }
    }
    return accessorJson_.failure();
}

}  // namespace nwcreate
