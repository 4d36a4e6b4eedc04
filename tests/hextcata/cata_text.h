// An independent reader of catalogue lines: rebuilds points and solids from their text, in the component's frame.
#pragma once

#include "hextinterface/hextcata/stream.h"
#include "platform/geometry.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

// A catalogue stream whose bytes can be read at any time.
class TextStream {
public:
    TextStream();
    CataStream& stream() { return *stream_; }
    // Closes the stream and gives what it wrote, with bare line feeds.
    std::string text();

private:
    std::shared_ptr<std::string> bytes_;
    std::unique_ptr<CataStream> stream_;
};

// An expected or rebuilt solid by what tells it: its kind, sizes, and points of its surface or axis.
struct SolidShape {
    std::string kind;
    std::vector<double> sizes;
    std::vector<HxGePoint3D> points;
};

// A frame in which a component stands in the plant. Need not be right-handed.
struct Placement {
    HxGePoint3D origin;
    HxGeVector3D x{1, 0, 0};
    HxGeVector3D y{0, 1, 0};
    HxGeVector3D z{0, 0, 1};
    HxGePoint3D at(const HxGePoint3D& local) const { return origin + along(local.asVector()); }
    HxGeVector3D along(const HxGeVector3D& local) const { return x * local.x + y * local.y + z * local.z; }
};

struct CataLine {
    std::string function;  // behind "!!ORNACata"; empty for other lines
    std::vector<std::string> arguments;
    std::string text;
};

class CataText {
public:
    explicit CataText(const std::string& text);

    const std::vector<CataLine>& lines() const { return lines_; }
    std::vector<const CataLine*> calls(const std::string& function) const;
    // The cartesian point of a number.
    bool hasPoint(int number) const { return points_.count(number) != 0; }
    // All solids, in order, rebuilt from text alone.
    std::vector<SolidShape> solids() const;

private:
    struct Ray {
        HxGePoint3D origin;
        HxGeVector3D direction;
    };
    struct Vertex {
        double x;
        double y;
        double radius;
    };
    Ray ray(const std::string& axis) const;
    SolidShape solid(const CataLine& line) const;
    SolidShape roundSolid(const CataLine& line) const;
    SolidShape snout(const CataLine& line) const;
    SolidShape pyramid(const CataLine& line) const;
    SolidShape bend(const CataLine& line) const;
    SolidShape extrusion(const CataLine& line, const std::vector<Vertex>& loop) const;

    std::vector<CataLine> lines_;
    std::map<int, Ray> points_;
};

// A direction text: a word such as "-X", an angle such as "X45.000000Y", or a direction such as "E 45 N".
HxGeVector3D readDirection(const std::string& text);
double readNumber(const std::string& argument);
// The text with each number rounded to four decimals, so that texts that differ in noise alone are equal.
std::string withoutNoise(const std::string& text);
// Adds a failure unless both are the same solid: sizes, and points in any order.
void expectSame(const SolidShape& actual, const SolidShape& expected, const std::string& what);
