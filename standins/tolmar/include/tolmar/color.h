// Colours of the host.
#pragma once

class TlCmColor {
public:
    TlCmColor() = default;
    static TlCmColor byIndex(int index) {
        TlCmColor color;
        color.index_ = index;
        return color;
    }
    // 1..255, 0 for "by block", 256 for "by layer".
    int colorIndex() const { return index_; }
    void setColorIndex(int index) { index_ = index; }

private:
    int index_ = 256;
};
