#include "sources/report.h"

#include <algorithm>
#include <utility>

namespace plant {

SourceCount& SourceReport::balance(std::string_view kind) {
    const auto at = std::find_if(balances_.begin(), balances_.end(), [&](const auto& row) { return row.kind == kind; });
    return at != balances_.end() ? *at : balances_.emplace_back(SourceCount{std::string(kind)});
}

SourceFinding* SourceReport::find(std::string_view code) {
    const auto at = std::find_if(findings_.begin(), findings_.end(), [&](const auto& row) { return row.code == code; });
    return at != findings_.end() ? &*at : nullptr;
}

bool SourceReport::keeps(std::string_view code) const {
    const SourceFinding* finding = const_cast<SourceReport*>(this)->find(code);
    return finding == nullptr || finding->first.size() < mostEntries;
}

void SourceReport::tell(std::string_view code, SourceGrade grade, SourceEntry entry) {
    SourceFinding* finding = find(code);
    if (finding == nullptr) {
        finding = &findings_.emplace_back(SourceFinding{std::string(code), grade, 0, {}});
    }
    ++finding->count;
    if (finding->first.size() < mostEntries) {
        finding->first.push_back(std::move(entry));
    }
}

void SourceReport::tellMore(std::string_view code) {
    if (SourceFinding* finding = find(code)) {
        ++finding->count;
    }
}

bool SourceReport::isBalanced() const {
    return std::all_of(balances_.begin(), balances_.end(), [](const SourceCount& row) { return row.isBalanced(); });
}

bool SourceReport::hasLosses() const {
    return std::any_of(findings_.begin(), findings_.end(),
                       [](const SourceFinding& finding) { return finding.grade == SourceGrade::Loss; });
}

}  // namespace plant
