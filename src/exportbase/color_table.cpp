#include "exportbase/color_table.h"

#include "platform/hxcom.h"

void colorToRgb(int index, float (&rgb)[3]) {
    constexpr int lastIndex = 255;
    if (index < 0 || index > lastIndex) {
        return;
    }
    const unsigned packed = hxcad::transAcadColorIdx2RGB(index);
    for (unsigned i = 0; i < 3; ++i) {
        rgb[i] = static_cast<float>(packed >> 8U * i & 0xFFU);
    }
}
