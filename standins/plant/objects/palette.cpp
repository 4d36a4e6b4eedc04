// The host's palette of 256 colour indexes.
#include "platform/hxcom.h"

namespace {

struct Rgb {
    int red;
    int green;
    int blue;
};

constexpr int lastIndex = 255;
constexpr Rgb firstColors[] = {{128, 128, 128}, {255, 0, 0},   {255, 255, 0},   {0, 255, 0},     {0, 255, 255},
                               {0, 0, 255},     {255, 0, 255}, {255, 255, 255}, {128, 128, 128}, {192, 192, 192}};
constexpr int firstOfRing = 10;
constexpr int firstGrey = 250;
constexpr int greys[] = {51, 91, 132, 173, 214, 255};
constexpr int brightness[] = {255, 204, 153, 127, 76};
constexpr int stepsOfLeg = 4;
// Corners of the ring of hues: red, yellow, green, cyan, blue, magenta and red again.
constexpr int corners[] = {1, 2, 3, 4, 5, 6, 1};

// One part of a hue that stands `step` quarters of the way between two corners, at a brightness; `pale` moves it half
// way to that brightness. Whole numbers throughout: eighths of `value`.
int part(int from, int to, int step, int value, bool pale) {
    const int quarters = (from * (stepsOfLeg - step) + to * step) / lastIndex;
    return pale ? value * (stepsOfLeg + quarters) / (2 * stepsOfLeg) : value * quarters / stepsOfLeg;
}

Rgb ringColor(int index) {
    const int hue = (index - firstOfRing) / 10;
    const int row = (index - firstOfRing) % 10;
    const Rgb& from = firstColors[corners[hue / stepsOfLeg]];
    const Rgb& to = firstColors[corners[hue / stepsOfLeg + 1]];
    const auto one = [&](int a, int b) { return part(a, b, hue % stepsOfLeg, brightness[row / 2], row % 2 != 0); };
    return {one(from.red, to.red), one(from.green, to.green), one(from.blue, to.blue)};
}

Rgb colorOf(int index) {
    if (index < firstOfRing) {
        return firstColors[index];
    }
    if (index < firstGrey) {
        return ringColor(index);
    }
    const int grey = greys[index - firstGrey];
    return {grey, grey, grey};
}

}  // namespace

unsigned hxcad::transAcadColorIdx2RGB(int index) {
    if (index < 0 || index > lastIndex) {
        return 0;
    }
    const Rgb color = colorOf(index);
    return static_cast<unsigned>(color.red) | static_cast<unsigned>(color.green) << 8U |
           static_cast<unsigned>(color.blue) << 16U;
}

int hxcad::getInverseColor(int index) {
    return lastIndex - index;
}
