#include "sources/review/format.h"

#include "sources/attributes/index.h"
#include "sources/contents.h"
#include "sources/mapped_file.h"
#include "sources/remarks.h"
#include "sources/review/source.h"
#include "sources/rvm/survey.h"

#include <optional>

namespace plant::review {

bool isReview(std::string_view start, const std::filesystem::path&) {
    return rvm::isRvm(start) || attributes::isAttributeText(start);
}

void readReview(SourceFile& file) {
    const Contents rvm(file);
    if (attributes::isAttributeText(rvm.bytes().substr(0, startSize))) {
        refuse("an attribute text alone is no plant; name the RVM file beside it");
    }
    std::error_code error;
    const bool isFile = std::filesystem::is_regular_file(file.path, error);
    const std::filesystem::path beside = isFile ? attributesBeside(file.path) : std::filesystem::path();
    std::optional<MappedFile> text;
    if (!beside.empty()) {
        text.emplace(beside);
    }
    // Records are told in an order of their own; the offsets in what is refused say where.
    file.placeOf = [](RecordNumber record) { return "record " + std::to_string(record.number); };
    SourceReport report;
    tellReview({rvm.bytes(), file.path.string(), text ? text->bytes() : std::string_view(), beside.string()},
               file.plant.builder, file.plant.world, report);
    addRemarks(report, file.path.string(), file.plant.remarks);
}

}  // namespace plant::review
