#include "sources/remarks.h"

namespace plant {

namespace {

LoadRemark::Grade gradeOf(SourceGrade grade) {
    return grade == SourceGrade::Loss ? LoadRemark::Grade::Loss : LoadRemark::Grade::Note;
}

}  // namespace

void addRemarks(const SourceReport& report, const std::string& name, std::vector<LoadRemark>& remarks) {
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

}  // namespace plant
