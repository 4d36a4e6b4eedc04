#include "nwcreate/store/shapes.h"

#include "gltf/json_text.h"
#include "nwcreate/numbers/content_hash.h"
#include "nwcreate/numbers/text_cursor.h"

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
constexpr std::size_t mostVertexBytes = 128;
constexpr std::size_t mostIndexBytes = std::size_t{1} << 16U;

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

std::uint32_t ShapeStore::EarlyBytes::keep(std::string_view bytes) {
    if (bytes.size() > mostOfOne_) {
        return none;
    }
    if (blocks_.empty() || used_ + bytes.size() > blockSize) {
        if (blocks_.size() == mostBlocks) {
            return none;
        }
        blocks_.push_back(std::make_unique_for_overwrite<char[]>(blockSize));
        used_ = 0;
    }
    std::memcpy(blocks_.back().get() + used_, bytes.data(), bytes.size());
    const std::size_t place = (blocks_.size() - 1) * blockSize + used_;
    used_ += bytes.size();
    return static_cast<std::uint32_t>(place);
}

bool ShapeStore::EarlyBytes::equals(std::uint32_t place, std::string_view bytes) const {
    return std::memcmp(blocks_[place / blockSize].get() + place % blockSize, bytes.data(), bytes.size()) == 0;
}

struct ShapeStore::Buffer {
    explicit Buffer(const std::string& folder) : vertices(folder), indices(folder) {}
    std::uint64_t size() const { return vertices.size() + indices.size(); }

    Spool vertices;
    Spool indices;
    std::uint32_t vertexView = ShapeAccessors::none;
    std::uint32_t indexView = ShapeAccessors::none;
};

// A list as it stands in its buffer.
struct ShapeStore::Packed {
    std::string_view bytes;
    std::uint32_t count = 0;
    std::uint64_t hash = contentHash(bytes, 0);
};

ShapeStore::ShapeStore(std::string spoolFolder, std::uint64_t bufferLimit)
    : folder_(std::move(spoolFolder)), bufferLimit_(bufferLimit), vertexLists_(&Buffer::vertices, mostVertexBytes),
      indexLists_(&Buffer::indices, mostIndexBytes), accessorJson_(folder_) {}

ShapeStore::~ShapeStore() = default;

std::uint32_t ShapeStore::add(std::span<const float> positions, std::span<const std::uint32_t> indices) {
    const std::size_t vertexCount = positions.size() / 3;
    const Packed vertices{bytesOf(positions), static_cast<std::uint32_t>(vertexCount)};
    const Packed corners{packIndices(indices, isShort(vertexCount)), static_cast<std::uint32_t>(indices.size())};
    std::uint32_t vertexList = find(vertexLists_, vertices);
    std::uint32_t indexList = indices.empty() ? ShapeAccessors::none : find(indexLists_, corners);
    const bool areNewVertices = vertexList == ShapeAccessors::none;
    const bool areNewIndices = !indices.empty() && indexList == ShapeAccessors::none;
    roomFor((areNewVertices ? vertices.bytes.size() : 0) + (areNewIndices ? corners.bytes.size() : 0));
    if (areNewVertices) {
        vertexList = store(vertexLists_, vertices);
        writeVertexAccessor(vertexLists_.lists[vertexList], positions);
    }
    if (areNewIndices) {
        Spool& spool = buffers_.back()->indices;
        if (!isShort(vertexCount) && spool.size() % sizeof(std::uint32_t) != 0) {
            spool.append(std::string_view("\0\0", 2));
        }
        indexList = store(indexLists_, corners);
        writeIndexAccessor(indexLists_.lists[indexList], isShort(vertexCount));
    }
    return shapeOf(vertexList, indexList);
}

std::uint32_t ShapeStore::find(ListSet& set, const Packed& packed) {
    const auto first = set.firstOfHash.find(packed.hash);
    std::uint32_t at = first != set.firstOfHash.end() ? first->second : ShapeAccessors::none;
    while (at != ShapeAccessors::none && !isEqual(set, set.lists[at], packed)) {
        at = set.lists[at].next;
    }
    return at;
}

bool ShapeStore::isEqual(const ListSet& set, const List& list, const Packed& packed) {
    if (list.count != packed.count || list.size != packed.bytes.size()) {
        return false;
    }
    return list.early != EarlyBytes::none ? set.early.equals(list.early, packed.bytes)
                                          : ((*buffers_[list.buffer]).*set.spool).equals(list.offset, packed.bytes);
}

// Puts a new list at the end of the last buffer; its accessor is the next.
std::uint32_t ShapeStore::store(ListSet& set, const Packed& packed) {
    const auto number = static_cast<std::uint32_t>(set.lists.size());
    Spool& spool = (*buffers_.back()).*set.spool;
    List list;
    list.offset = spool.size();
    list.size = packed.bytes.size();
    list.count = packed.count;
    list.buffer = static_cast<std::uint32_t>(buffers_.size() - 1);
    list.accessor = accessorCount_;
    list.early = set.early.keep(packed.bytes);
    const auto [first, isNew] = set.firstOfHash.try_emplace(packed.hash, number);
    list.next = isNew ? ShapeAccessors::none : std::exchange(first.value(), number);
    spool.append(packed.bytes);
    set.lists.push_back(list);
    return number;
}

std::uint32_t ShapeStore::shapeOf(std::uint32_t vertices, std::uint32_t indices) {
    std::uint32_t& first = vertexLists_.lists[vertices].firstShape;
    for (std::uint32_t at = first; at != ShapeAccessors::none; at = shapes_[at].next) {
        if (shapes_[at].indices == indices) {
            return at;
        }
    }
    shapes_.push_back({vertices, indices, first});
    first = static_cast<std::uint32_t>(shapes_.size() - 1);
    return first;
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

// {"bufferView":V,"byteOffset":N,"componentType":T,"count":N,"type":"...", and what follows
TextCursor ShapeStore::beginAccessor(const List& list, std::uint32_t view) {
    constexpr std::size_t mostRoom = 1024;
    TextCursor json(accessorJson_.room(mostRoom));
    json.put(accessorCount_ == 0 ? "{" : ",{").put(R"("bufferView":)").count(view);
    json.put(R"(,"byteOffset":)").count(list.offset).put(R"(,"count":)").count(list.count);
    ++accessorCount_;
    return json;
}

void ShapeStore::writeVertexAccessor(const List& list, std::span<const float> positions) {
    TextCursor json = beginAccessor(list, viewOf(buffers_[list.buffer]->vertexView));
    const Range range = rangeOf(positions);
    json.put(R"(,"componentType":5126,"type":"VEC3","min":)");
    putNumbers(json, range.low);
    json.put(R"(,"max":)");
    putNumbers(json, range.high);
    accessorJson_.keep(json.put("}").at());
}

void ShapeStore::writeIndexAccessor(const List& list, bool isShort) {
    TextCursor json = beginAccessor(list, viewOf(buffers_[list.buffer]->indexView));
    json.put(R"(,"componentType":)").count(isShort ? shortType : intType).put(R"(,"type":"SCALAR"})");
    accessorJson_.keep(json.at());
}

ShapeAccessors ShapeStore::accessors(std::uint32_t shape) const {
    const Shape& found = shapes_[shape];
    const bool hasIndices = found.indices != ShapeAccessors::none;
    return {vertexLists_.lists[found.vertices].accessor,
            hasIndices ? indexLists_.lists[found.indices].accessor : ShapeAccessors::none};
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
        if (buffer.vertexView != ShapeAccessors::none) {
            gltf::JsonText vertices(views[buffer.vertexView]);
            vertices.beginObject().key("buffer").number(i).key("byteLength").number(buffer.vertices.size());
            vertices.key("byteStride").number(vertexSize).key("target").number(vertexTarget).endObject();
        }
        if (buffer.indexView != ShapeAccessors::none) {
            gltf::JsonText indices(views[buffer.indexView]);
            indices.beginObject().key("buffer").number(i).key("byteOffset").number(buffer.vertices.size());
            indices.key("byteLength").number(buffer.indices.size()).key("target").number(indexTarget).endObject();
        }
    }
    std::string all;
    gltf::JsonText json(all);
    for (const std::string& view : views) {
        json.list(view);
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
