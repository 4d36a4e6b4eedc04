// Vertices and indices of all shapes: spooled to disk as they come, equal lists of either once. Gives the accessors,
// buffer views and buffers of the scene.
//
// Each buffer holds its vertices first and its indices behind them. A buffer that is full is followed by the next.
#pragma once

#include "nwcreate/numbers/text_cursor.h"
#include "nwcreate/store/spool.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <tsl/robin_map.h>
#include <vector>

namespace nwcreate {

// What the primitives of a mesh refer to.
struct ShapeAccessors {
    std::uint32_t positions = 0;
    std::uint32_t indices = none;
    static constexpr std::uint32_t none = 0xFFFFFFFF;
};

class ShapeStore {
public:
    ShapeStore(std::string spoolFolder, std::uint64_t bufferLimit);
    ~ShapeStore();

    // The number of the shape with these local positions (three a vertex, at least one vertex) and indices (none: the
    // vertices in their order).
    std::uint32_t add(std::span<const float> positions, std::span<const std::uint32_t> indices);
    ShapeAccessors accessors(std::uint32_t shape) const;

    std::size_t shapeCount() const { return shapes_.size(); }
    std::size_t bufferCount() const { return buffers_.size(); }
    std::uint64_t bufferSize(std::size_t buffer) const;
    std::uint64_t totalSize() const;
    // Values of "accessors", separated by commas.
    Spool& accessorJson() { return accessorJson_; }
    // Values of "bufferViews" likewise.
    std::string viewJson() const;
    // False when the bytes cannot be read back.
    bool copyBuffer(std::size_t buffer, tolmar::OutputFile& file);
    // The first that went wrong with a spool; empty while all is well.
    std::string failure() const;

private:
    struct Buffer;
    struct Packed;

    // Bytes that came early stay in memory for comparing: those are the ones that come again and again.
    class EarlyBytes {
    public:
        static constexpr std::uint32_t none = 0xFFFFFFFF;
        // Keeps no more than `mostOfOne` bytes of a list.
        explicit EarlyBytes(std::size_t mostOfOne) : mostOfOne_(mostOfOne) {}
        // The place of a copy; none when there is no room.
        std::uint32_t keep(std::string_view bytes);
        bool equals(std::uint32_t place, std::string_view bytes) const;

    private:
        std::size_t mostOfOne_;
        std::vector<std::unique_ptr<char[]>> blocks_;
        std::size_t used_ = 0;  // of the last block
    };
    // Vertices or indices on disk.
    struct List {
        std::uint64_t offset = 0;
        std::uint64_t size = 0;
        std::uint32_t count = 0;
        std::uint32_t buffer = 0;
        std::uint32_t accessor = 0;
        std::uint32_t next = ShapeAccessors::none;  // of the same hash
        std::uint32_t early = EarlyBytes::none;
        std::uint32_t firstShape = ShapeAccessors::none;  // of these vertices
    };
    // Lists of one kind, equal ones once.
    struct ListSet {
        ListSet(Spool Buffer::*place, std::size_t mostOfOne) : spool(place), early(mostOfOne) {}
        Spool Buffer::*spool;
        std::vector<List> lists;
        // By the hash of its content, which mixes well enough. Lists of one hash are chained.
        tsl::robin_map<std::uint64_t, std::uint32_t> firstOfHash;
        EarlyBytes early;
    };
    struct Shape {
        std::uint32_t vertices = 0;
        std::uint32_t indices = ShapeAccessors::none;
        std::uint32_t next = ShapeAccessors::none;  // of the same vertices
    };

    std::uint32_t find(ListSet& set, const Packed& packed);
    bool isEqual(const ListSet& set, const List& list, const Packed& packed);
    std::uint32_t store(ListSet& set, const Packed& packed);
    std::uint32_t shapeOf(std::uint32_t vertices, std::uint32_t indices);
    Buffer& roomFor(std::uint64_t size);
    std::uint32_t viewOf(std::uint32_t& view);
    TextCursor beginAccessor(const List& list, std::uint32_t view);
    void writeVertexAccessor(const List& list, std::span<const float> positions);
    void writeIndexAccessor(const List& list, bool isShort);

    std::string folder_;
    std::uint64_t bufferLimit_;
    std::vector<std::unique_ptr<Buffer>> buffers_;
    ListSet vertexLists_;
    ListSet indexLists_;
    std::vector<Shape> shapes_;
    Spool accessorJson_;
    std::uint32_t accessorCount_ = 0;
    std::uint32_t viewCount_ = 0;
};

}  // namespace nwcreate
