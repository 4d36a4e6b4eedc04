// The reason behind each status of an operation.
#include "tolmar/entity.h"

namespace {

struct StatusText {
    Tl::ErrorStatus status;
    const char* text;
};

constexpr StatusText statusTexts[] = {
    {Tl::eOk, ""},
    {Tl::eInvalidInput, "an argument cannot be used"},
    {Tl::eNotApplicable, "the entity has no such thing"},
    {Tl::eNotFinite, "a coordinate or size is not a finite number"},
    {Tl::eZeroSize, "a size is zero or negative"},
    {Tl::eZeroDirection, "a direction has no length, or two directions are parallel"},
    {Tl::eCoincidentPoints, "points that must differ coincide or stand on one line"},
    {Tl::eTooLarge, "a coordinate or size is beyond 1000 km"},
    {Tl::eNoOutline, "there is no outline, or one of fewer than three different points"},
    {Tl::eBadOutline, "the outline encloses nothing or is not flat"},
    {Tl::eBadSides, "the number of sides is below 3 or above 100"},
    {Tl::eBadAngle, "the sweep is zero"},
    {Tl::eProfileCrossesAxis, "the profile crosses the axis"},
    {Tl::eTooManyVertices, "the outline has too many vertices"},
    {Tl::eUnknownClass, "no shape is known for the class"},
    {Tl::eSelfCutting, "the shape would cut itself"},
    {Tl::eBadSerial, "the serialised content cannot be read"},
};

}  // namespace

const char* tlErrorText(Tl::ErrorStatus status) {
    for (const StatusText& row : statusTexts) {
        if (row.status == status) {
            return row.text;
        }
    }
    return "unknown status";
}
