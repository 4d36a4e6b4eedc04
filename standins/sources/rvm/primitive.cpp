#include "sources/rvm/primitive.h"

#include <algorithm>
#include <cmath>

namespace plant::rvm {

namespace {

constexpr std::size_t floatSize = 4;
// Parameters of each kind; facets have a body of their own.
constexpr std::array<std::size_t, lastKind + 1> parameterCounts = {0, 7, 3, 4, 3, 2, 2, 9, 2, 1, 2, 0};

void readNumbers(Body& body, double* to, std::size_t count) {
    const char* at = body.take(floatSize * count);
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = static_cast<double>(floatAt(at + floatSize * i));
    }
}

}  // namespace

bool readPrimitive(std::string_view bytes, const Chunk& chunk, Primitive& primitive) {
    Body body(bytes, chunk);
    body.word();
    const std::uint32_t kind = body.word();
    if (kind == 0 || kind > lastKind) {
        return false;
    }
    primitive.role = chunk.tag;
    primitive.kind = Kind{kind};
    primitive.offset = chunk.offset;
    double matrix[12];
    readNumbers(body, matrix, std::size(matrix));
    primitive.placement = placementOf(matrix);
    readNumbers(body, primitive.box.data(), primitive.box.size());
    body.take(chunk.tag == Tag::Primitive ? 0 : floatSize);  // a transparency
    if (primitive.kind == Kind::Facets) {
        const std::size_t size = body.left();
        primitive.facets = {body.take(size), size};
        primitive.hasFiniteNumbers = true;
        return true;
    }
    const std::size_t count = parameterCounts[kind];
    readNumbers(body, primitive.p.data(), count);
    body.finish();
    primitive.hasFiniteNumbers =
        std::all_of(primitive.p.begin(), primitive.p.begin() + static_cast<std::ptrdiff_t>(count),
                    [](double number) { return std::isfinite(number); });
    return true;
}

}  // namespace plant::rvm
