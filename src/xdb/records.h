// The text records of XDBOUT: fields of a key, a colon, a value and a semicolon.
#pragma once

#include "platform/kvparams.h"
#include "platform/objects.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace xdb {

class RecordWriter {
public:
    // Records are appended to `data`. With `strict` 1 gaps in the data of a pipeline are errors.
    RecordWriter(std::vector<std::string>& data, int strict) : data_(data), isStrict_(strict == 1) {}

    // The attributes whose keys are among `keys`, in the order of the attributes; an empty record where there are none.
    void writeFields(const HxDbSmrtlnEntity& object, std::span<const std::string_view> keys);
    // False for an error, which has shown a message.
    bool writeFittingData(const HxDbSmrtlnEntity& object);
    // The same; false for null, too.
    bool writePipeData(const HxDbSmrtlnEntity* object);

private:
    std::vector<std::string>& data_;
    bool isStrict_;
    std::vector<KVParams> params_;  // of the object in hand
};

}  // namespace xdb
