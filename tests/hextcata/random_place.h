// Numbers, directions and places in the plant, the same for the same seed on every system.
#pragma once

#include "cata_text.h"

#include <random>

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    double number(double low, double high) {
        return low + (high - low) * static_cast<double>(engine_() >> 11) * 0x1p-53;
    }
    HxGePoint3D point(double reach = 300) {
        return {number(-reach, reach), number(-reach, reach), number(-reach, reach)};
    }
    HxGeVector3D direction() {
        HxGeVector3D v;
        do {
            v = point(1).asVector();
        } while (v.length() < 0.2 || v.length() > 1);
        return v.normal();
    }
    HxGeVector3D across(const HxGeVector3D& v) { return v.crossProduct(direction()).normal(); }
    Placement placement() {
        Placement place;
        place.origin = point(1e5);
        place.x = direction();
        place.y = across(place.x);
        place.z = place.x.crossProduct(place.y);
        return place;
    }

private:
    std::mt19937_64 engine_;
};
