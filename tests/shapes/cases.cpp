#include "shapes/truth.h"

#include <cmath>

namespace {

std::vector<ShapeCase> makeCases() {
    std::vector<ShapeCase> out;
    truth::addBlocks(out);
    truth::addRound(out);
    truth::addExtrusions(out);
    truth::addBends(out);
    truth::addRevolved(out);
    return out;
}

}  // namespace

double chords(double radius) {
    return radius <= 2 ? 3 : std::ceil(tlGePi / std::acos(1 - 1 / radius) - 1e-9);
}

const std::vector<ShapeCase>& shapeCases() {
    static const std::vector<ShapeCase> cases = makeCases();
    return cases;
}
