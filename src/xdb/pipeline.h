// What the records of XDBOUT take from the pipeline of an object.
#pragma once

#include "platform/kvparams.h"
#include "platform/objects.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace xdb {

// The attributes of a pipeline that are noted for the end of a fitting's record; none when the pipeline has no such
// attribute.
struct PipelineNotes {
    bool found = false;
    std::optional<std::string> roadno;
    std::optional<std::string> pipesegmenttype;
    std::optional<std::string> lineno;
};

// Reads the pipeline that an object's "lineno" names, into the record of the object. A pipeline that does not open has
// nothing to say.
class PipelineFields {
public:
    PipelineFields(const HxDbSmrtlnEntity& object, bool isStrict, std::string& record)
        : object_(object), isStrict_(isStrict), record_(record) {}

    // A pipe: every field goes into the record, in the order of the pipeline's attributes. False for an error, which
    // has shown its message.
    bool writeForPipe(std::string_view lineno);
    // A fitting: only the ends of the line go into the record, the rest is noted.
    bool writeForFitting(std::string_view lineno, PipelineNotes& notes);

private:
    bool write(std::string_view lineno);
    bool writeAttribute(const KVParams& attribute);
    bool writeRoad(const KVParams& attribute);
    bool writeLineEnd(const KVParams& attribute);
    void take(const KVParams& attribute, std::optional<std::string> PipelineNotes::*note);
    bool noRoad() const;

    const HxDbSmrtlnEntity& object_;
    bool isStrict_;
    std::string& record_;
    HxDbObject* pipeline_ = nullptr;
    PipelineNotes* notes_ = nullptr;  // null for a pipe
    bool hasRoad_ = false;
};

}  // namespace xdb
