// What all macro writers share: how numbers, positions, directions and orientations become text, and how names and
// values are quoted. Texts are appended to a line buffer; a "\n" ends a line.
#pragma once

#include "platform/geometry.h"

#include <cstdint>
#include <string>
#include <string_view>

// A local coordinate system; the default is the world frame.
struct CoordFrame {
    HxGePoint3D origin;
    HxGeVector3D xAxis{1, 0, 0};
    HxGeVector3D yAxis{0, 1, 0};
    HxGeVector3D zAxis{0, 0, 1};

    CoordFrame() = default;
    // Throws ExportException "无效方向" for an axis of zero length.
    CoordFrame(const HxGePoint3D& o, const HxGeVector3D& x, const HxGeVector3D& y, const HxGeVector3D& z);
    // The same test on a frame that has been changed.
    void check() const;
};
extern const CoordFrame worldFrame;

// Numbers: `appendTrimmed` prints six decimals without trailing zeros, as positions and directions do; `appendFixed`
// exactly six decimals (equip.txt, struct.txt, axisline.txt, sup.txt, cata.txt); `appendShort` six significant digits
// in the shortest form (pipe.txt).
void appendTrimmed(std::string& out, double value);
void appendFixed(std::string& out, double value);
void appendShort(std::string& out, double value);
void appendInt(std::string& out, std::int64_t value);

// "E 1200.5 S 300 U 0"
void appendPosition(std::string& out, const HxGePoint3D& point);
std::string positionText(const HxGePoint3D& point);
// "E 45 N"; empty for a vector without a component above 1e-6. `isAxis`: the vector lies along a world axis.
std::string directionText(const HxGeVector3D& vector, bool* isAxis = nullptr);
// 1 only Z, 2 only Y, 3 only X exceeds the tolerance; 4 otherwise.
int axisClass(const HxGeVector3D& vector);
// Two clauses joined by " AND "; throws ExportException "无效方向" for an axis without direction.
std::string orientationText(const CoordFrame& frame);
// "X is ... and Y is ..."
std::string axesText(const HxGeVector3D& x, const HxGeVector3D& y);

void appendEscaped(std::string& out, std::string_view text);  // every "'" doubled
std::string escapeQuotes(std::string_view text);              // the same as a text of its own
void appendValue(std::string& out, std::string_view value);   // 'value', or 'unset' for an empty one; not escaped
void appendRef(std::string& out, std::string_view name);      // '/name', or 'unset' for an empty one; not escaped
bool isNumericText(std::string_view text);  // blanks, one leading "-", digits and points; empty passes

class HxDbObject;
// The first of end2, end3, end4 that is neither empty nor "NONE"; empty when there is none.
std::string firstEndType(const HxDbObject* object);

// Longest element name that HEXT takes.
inline constexpr std::size_t maxNameLength = 51;
