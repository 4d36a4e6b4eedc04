#include "sources/review/format.h"

#include "sources/attributes/index.h"
#include "sources/mapped_file.h"
#include "sources/report.h"
#include "sources/review/source.h"
#include "sources/rvm/survey.h"

#include <optional>
#include <utility>

namespace plant::review {

namespace {

// The bytes of a file: seen as memory where it is one, else read to the end.
class Contents {
public:
    explicit Contents(SourceFile& file) {
        std::error_code error;
        if (std::filesystem::is_regular_file(file.path, error)) {
            mapped_.emplace(file.path);
            bytes_ = mapped_->bytes();
            return;
        }
        constexpr std::size_t partSize = std::size_t{1} << 20;
        for (std::size_t size = partSize; size == partSize;) {
            const std::size_t before = read_.size();
            read_.resize(before + partSize);
            size = file.bytes.read(read_.data() + before, partSize);
            read_.resize(before + size);
        }
        bytes_ = read_;
    }
    std::string_view bytes() const { return bytes_; }

private:
    std::optional<MappedFile> mapped_;
    std::string read_;
    std::string_view bytes_;
};

LoadRemark::Grade gradeOf(SourceGrade grade) {
    return grade == SourceGrade::Loss ? LoadRemark::Grade::Loss : LoadRemark::Grade::Note;
}

void remark(const SourceReport& report, const std::string& name, std::vector<LoadRemark>& remarks) {
    for (const SourceFinding& finding : report.findings()) {
        for (const SourceEntry& entry : finding.first) {
            remarks.push_back({gradeOf(finding.grade), finding.code, entry.place, entry.text});
        }
        if (const std::uint64_t more = finding.count - finding.first.size(); more > 0) {
            remarks.push_back({gradeOf(finding.grade), finding.code, name, std::to_string(more) + " more"});
        }
    }
    for (const SourceCount& row : report.balances()) {
        remarks.push_back({LoadRemark::Grade::Note, "source.balance", name,
                           row.kind + ": " + std::to_string(row.read) + " read, " + std::to_string(row.taken) +
                               " taken over, " + std::to_string(row.told) + " told"});
    }
}

}  // namespace

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
               file.builder, file.world, report);
    remark(report, file.path.string(), file.remarks);
}

}  // namespace plant::review
