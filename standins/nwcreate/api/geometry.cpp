// Geometry streams and text styles.
#include "nwcreate/store/library.h"

#include <algorithm>

using namespace nwcreate;

namespace {

using StreamSlot = HandleTable<StreamRecord, LiNwcGeometryStream>::Slot;

// With a stream whose geometry lives.
template <typename Body>
LiNwcStatus withStream(const char* call, LiNwcGeometryStream stream, Body&& body) noexcept {
    return withRecord(call, &Library::streams, stream, [&](Library& lib, StreamSlot& slot) -> LiNwcStatus {
        if (slot.record.geometry == noSlot) {
            return badOrder(call, "the geometry of the stream is gone");
        }
        return body(lib, slot.record);
    });
}

// With a stream between Begin and End.
template <typename Body>
LiNwcStatus inSection(const char* call, LiNwcGeometryStream stream, Body&& body) noexcept {
    return withStream(call, stream, [&](Library&, StreamRecord& record) -> LiNwcStatus {
        return record.isInSection ? body(record) : badOrder(call, "not between Begin and End");
    });
}

template <typename Number>
LiNwcStatus append(const char* call, LiNwcGeometryStream stream, NumberList<Number> Section::*list,
                   std::span<const Number> numbers) noexcept {
    return inSection(call, stream, [&](StreamRecord& record) -> LiNwcStatus {
        (record.section.*list).append(numbers);
        return LI_NWC_OK;
    });
}

LiNwcStatus addVertices(const char* call, LiNwcGeometryStream stream, NumberList<double> Section::*list,
                        std::span<const double> vertices) noexcept {
    return inSection(call, stream, [&](StreamRecord& record) -> LiNwcStatus {
        NumberList<double>& numbers = record.section.*list;
        if (!record.isMoved) {
            numbers.append(vertices);
            return LI_NWC_OK;
        }
        for (std::size_t i = 0; i < vertices.size(); i += 3) {
            numbers.append(transformed(record.transform, {vertices[i], vertices[i + 1], vertices[i + 2]}));
        }
        return LI_NWC_OK;
    });
}

// A negative index becomes one that names no vertex.
LiNwcStatus addIndex(const char* call, LiNwcGeometryStream stream, NumberList<std::uint32_t> Section::*list,
                     int index) noexcept {
    const auto number = static_cast<std::uint32_t>(index);
    return append(call, stream, list, std::span(&number, 1));
}

void combine(StreamRecord& record) {
    record.transform = unitMatrix;
    for (const Matrix& matrix : record.transforms) {
        record.transform = combined(record.transform, matrix);
    }
    record.isMoved = record.transform != unitMatrix;
}

}  // namespace

LiNwcGeometryStream LiNwcGeometryOpenStream(LiNwcGeometry geometry) {
    const char* const call = __func__;
    return guardedHandle<LiNwcGeometryStream>(call, [&](Library& lib) -> LiNwcGeometryStream {
        auto* node = lib.nodes.find(geometry);
        if (node == nullptr || !node->record.isGeometry) {
            badHandle(call);
            return nullptr;
        }
        if (node->record.stream != noSlot || node->record.store == nullptr) {
            badOrder(call, "a stream is open already, or the scene is gone");
            return nullptr;
        }
        StreamSlot& slot = lib.streams.create();
        slot.record.geometry = node->number;
        node->record.stream = slot.number;
        return give(lib, lib.streams, slot);
    });
}

LiNwcStatus LiNwcGeometryCloseStream(LiNwcGeometry geometry, LiNwcGeometryStream stream) {
    const char* const call = __func__;
    return withStream(call, stream, [&](Library& lib, StreamRecord& record) -> LiNwcStatus {
        auto* node = lib.nodes.find(geometry);
        if (node == nullptr || node->number != record.geometry) {
            return badHandle(call);
        }
        const bool isWhole = !record.isInSection;
        node->record.stream = noSlot;
        StreamSlot& slot = *lib.streams.find(stream);
        lib.streams.release(slot);
        lib.streams.recycle(slot);
        return isWhole ? LI_NWC_OK : badOrder(call, "the last section has no End");
    });
}

LiNwcStatus LiNwcGeometryStreamBegin(LiNwcGeometryStream stream, int flags) {
    const char* const call = __func__;
    return withStream(call, stream, [&](Library&, StreamRecord& record) -> LiNwcStatus {
        if (record.isInSection) {
            return badOrder(call, "the section before has no End");
        }
        if ((flags & ~LI_NWC_HAS_COLOR) != 0) {
            return badValue(call, "unknown flags");
        }
        record.section.clear();
        record.isInSection = true;
        record.takesColor = (flags & LI_NWC_HAS_COLOR) != 0;
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcGeometryStreamEnd(LiNwcGeometryStream stream) {
    const char* const call = __func__;
    return withStream(call, stream, [&](Library& lib, StreamRecord& record) -> LiNwcStatus {
        if (!record.isInSection || record.isInText) {
            return badOrder(call, "there is no section to end, or a text in it is not ended");
        }
        record.isInSection = false;
        if (const char* fault = faultOf(record.section)) {
            return badValue(call, fault);
        }
        NodeRecord& node = lib.nodes.at(record.geometry).record;
        if (node.store == nullptr) {
            return badOrder(call, "the scene is gone");
        }
        addSection(*node.store, record.section, node.shape);
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcGeometryStreamIndexedVertex(LiNwcGeometryStream stream, double x, double y, double z) {
    return addVertices(__func__, stream, &Section::vertices, std::array{x, y, z});
}

LiNwcStatus LiNwcGeometryStreamTriangleIndex(LiNwcGeometryStream stream, int index) {
    return addIndex(__func__, stream, &Section::triangles, index);
}

LiNwcStatus LiNwcGeometryStreamIndexedVertices(LiNwcGeometryStream stream, const double* vertices, size_t count) {
    return addVertices(__func__, stream, &Section::vertices, {vertices, vertices == nullptr ? 0 : 3 * count});
}

LiNwcStatus LiNwcGeometryStreamTriangleIndices(LiNwcGeometryStream stream, const uint32_t* indices, size_t count) {
    return append(__func__, stream, &Section::triangles, std::span(indices, indices == nullptr ? 0 : count));
}

LiNwcStatus LiNwcGeometryStreamLineStripVertex(LiNwcGeometryStream stream, double x, double y, double z) {
    return addVertices(__func__, stream, &Section::stripVertices, std::array{x, y, z});
}

LiNwcStatus LiNwcGeometryStreamLineStripIndex(LiNwcGeometryStream stream, int index) {
    return addIndex(__func__, stream, &Section::strip, index);
}

LiNwcStatus LiNwcGeometryStreamCircle(LiNwcGeometryStream stream, const double* center, const double* normal,
                                      double radius) {
    const char* const call = __func__;
    return inSection(call, stream, [&](StreamRecord& record) -> LiNwcStatus {
        if (center == nullptr || normal == nullptr) {
            record.section.fault = "a circle without a centre or a normal";
            return badValue(call, record.section.fault);
        }
        addCircle(record.section, record.transform, {center[0], center[1], center[2]},
                  {normal[0], normal[1], normal[2]}, radius);
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcGeometryStreamColor(LiNwcGeometryStream stream, double r, double g, double b, double a) {
    const char* const call = __func__;
    return inSection(call, stream, [&](StreamRecord& record) -> LiNwcStatus {
        if (!record.takesColor) {
            return badOrder(call, "the section was begun without colours");
        }
        for (const double part : {r, g, b, a}) {
            if (!(part >= 0.0 && part <= 1.0)) {
                return badValue(call, "no colour");
            }
        }
        record.section.hasColor = true;
        record.section.color = {{r, g, b}, {r, g, b}, a};
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcGeometryStreamPushTransform(LiNwcGeometryStream stream) {
    return withStream(__func__, stream, [](Library&, StreamRecord& record) {
        record.transforms.push_back(unitMatrix);
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcGeometryStreamSetTransform(LiNwcGeometryStream stream, const double* matrix) {
    const char* const call = __func__;
    return withStream(call, stream, [&](Library&, StreamRecord& record) -> LiNwcStatus {
        if (record.transforms.empty()) {
            return badOrder(call, "no transform was pushed");
        }
        if (matrix == nullptr) {
            return badValue(call, "no matrix");
        }
        std::copy_n(matrix, record.transforms.back().size(), record.transforms.back().begin());
        combine(record);
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcGeometryStreamPopTransform(LiNwcGeometryStream stream) {
    const char* const call = __func__;
    return withStream(call, stream, [&](Library&, StreamRecord& record) -> LiNwcStatus {
        if (record.transforms.empty()) {
            return badOrder(call, "no transform was pushed");
        }
        record.transforms.pop_back();
        combine(record);
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcGeometryStreamBeginText(LiNwcGeometryStream stream, LiNwcTextStyle style) {
    const char* const call = __func__;
    return inSection(call, stream, [&](StreamRecord& record) -> LiNwcStatus {
        const auto* found = library().styles.find(style);
        if (found == nullptr) {
            return badHandle(call);
        }
        if (record.isInText) {
            return badOrder(call, "the text before is not ended");
        }
        record.isInText = true;
        record.style = found->record.style;
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcGeometryStreamAddText(LiNwcGeometryStream stream, const char16_t* text) {
    const char* const call = __func__;
    return inSection(call, stream, [&](StreamRecord& record) -> LiNwcStatus {
        if (!record.isInText) {
            return badOrder(call, "no text was begun");
        }
        addText(record.section, record.transform, record.style, textOf(text));
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcGeometryStreamEndText(LiNwcGeometryStream stream) {
    const char* const call = __func__;
    return inSection(call, stream, [&](StreamRecord& record) -> LiNwcStatus {
        if (!record.isInText) {
            return badOrder(call, "no text was begun");
        }
        record.isInText = false;
        return LI_NWC_OK;
    });
}

LiNwcTextStyle LiNwcTextStyleCreate(const char16_t* fontName) {
    return guardedHandle<LiNwcTextStyle>(__func__, [fontName](Library& lib) {
        auto& slot = lib.styles.create();
        slot.record.style.font = escapedText(fontName);
        return give(lib, lib.styles, slot);
    });
}

LiNwcStatus LiNwcTextStyleSetFontHeight(LiNwcTextStyle style, double height) {
    const char* const call = __func__;
    return withRecord(call, &Library::styles, style, [&](Library&, auto& slot) -> LiNwcStatus {
        if (!(height > 0.0) || !isPlace(height)) {
            return badValue(call, "no height");
        }
        slot.record.style.height = height;
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcTextStyleDestroy(LiNwcTextStyle style) {
    return destroyPlain(__func__, &Library::styles, style);
}
