// Parts of pipes: their attributes, points and connections as the exports of pipe work read them.
#pragma once

#include "sources/review/attribute_teller.h"
#include "sources/review/piping.h"
#include "sources/review/specifications.h"

#include <string>
#include <vector>

namespace plant::review {

// What the pipeline around a part says.
struct Line {
    ObjectId id = 0;
    std::string specification;
    std::string insulation;  // code; empty for none
    std::string_view module = "Piping";
};

// A part on its way into the model: its item and its neighbours in the branch, 0 for none.
struct Part {
    const Item* item = nullptr;
    const PartRow* row = nullptr;
    Facts facts;
    ObjectId before = 0;
    ObjectId behind = 0;
    Vector in;  // the way the branch comes and goes on
    Vector out;
    bool isFlangedBefore = false;
    bool isFlangedBehind = false;
    std::string name;
};

// Everything of a part but its shape, its block's attributes and what begins and ends an object.
class PartTeller {
public:
    PartTeller(ModelBuilder& builder, const Piping& piping, Specifications& specifications)
        : builder_(&builder), piping_(&piping), specifications_(&specifications) {}

    // Composes the part, and tells its specification; no object is in hand yet.
    void prepare(const Part& part, const Line& line);
    std::string_view className() const { return part_->row->className; }
    void tellMembers();
    void tellAttributes();
    void tellPoints();

private:
    struct PlacedPoint {
        std::int16_t no = 0;
        Point at;
        std::int8_t flow = 0;
        std::vector<ObjectId> to;
    };

    void composeItem();
    void composeReducer();
    void composeEnds();
    void composePoints();
    Vector through() const;
    void addPassage(Point from, Point to);
    void addOutlet();
    void addEccentricPoints();
    Point outletPlace(Point center) const;
    std::int16_t ownNumber(std::uint8_t number) const;
    PlacedPoint& point(std::int16_t no, const Point& at, std::int8_t flow);
    void connect(PlacedPoint& point, End end) const;
    double outletBore() const;

    ModelBuilder* builder_;
    const Piping* piping_;
    Specifications* specifications_;
    const Part* part_ = nullptr;
    const Line* line_ = nullptr;
    std::string item_, itype_, smrtln_;
    PartEnds ends_;
    ObjectId specification_ = 0;
    bool isEccentric_ = false;
    std::vector<PlacedPoint> points_;
    TextDecoder decoder_;
};

// A number as people write it: at most three decimals.
std::string shortNumber(double number);

}  // namespace plant::review
