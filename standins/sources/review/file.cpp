#include "sources/review/file.h"

namespace plant::review {

void File::tellAt(std::string_view code, SourceGrade grade, std::uint64_t offset, std::string_view text) const {
    if (report->keeps(code)) {
        report->tell(code, grade, {name + ": " + rvm::placeOf(offset), std::string(text)});
    } else {
        report->tellMore(code);
    }
}

void File::tellLine(std::string_view code, SourceGrade grade, std::uint32_t line, std::string_view text) const {
    if (report->keeps(code)) {
        report->tell(code, grade, {textName + ": line " + std::to_string(line), std::string(text)});
    } else {
        report->tellMore(code);
    }
}

}  // namespace plant::review
