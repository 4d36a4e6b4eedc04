#include "hextinterface/manager/register/type_tables.h"

#include "frame/easy_log.h"
#include "scripts/project_config.h"

#include <algorithm>

namespace naming {

namespace {

constexpr std::string_view anything = "##";
constexpr int noMatch = -1;

// Empty fields stay; a separator at the very end gives no further field.
std::vector<std::string_view> split(std::string_view row) {
    std::vector<std::string_view> fields;
    while (!row.empty()) {
        const std::size_t end = row.find('|');
        fields.push_back(row.substr(0, end));
        row.remove_prefix(end == std::string_view::npos ? row.size() : end + 1);
    }
    return fields;
}

// The score of the itype, given that of the item.
int itypeScore(std::string_view row, std::string_view query, int itemScore) {
    const bool equal = query.empty() || query.front() == '@' || query == row;
    if (!equal) {
        return row == anything ? itemScore : noMatch;
    }
    return itemScore + 1;
}

// The score of a row whose item is the query's (`itemScore` 1) or matches anything (0).
int rowScore(const std::array<std::string, 6>& row, const TypeFields& query, int itemScore) {
    int score = itypeScore(row[1], query[1], itemScore);
    for (std::size_t i = 2; i < row.size() && score != noMatch; ++i) {
        if (row[i] == query[i]) {
            ++score;
        } else if (row[i] != anything) {
            return noMatch;
        }
    }
    return score;
}

bool isAllHashes(std::string_view text) {
    return text.find_first_not_of('#') == std::string_view::npos;
}

int patternScore(std::string_view pattern, std::string_view text) {
    if (pattern.empty()) {
        return text.empty() ? 0 : noMatch;
    }
    const std::size_t common = std::min(pattern.size(), text.size());
    int score = 0;
    for (std::size_t i = 0; i < common; ++i) {
        if (pattern[i] == text[i]) {
            ++score;
        } else if (pattern[i] != '#') {
            return noMatch;
        }
    }
    const std::string_view rest =
        pattern.size() < text.size() ? pattern.substr(pattern.size() - 1) : pattern.substr(common);
    return isAllHashes(rest) ? score : noMatch;
}

template <typename Use>
void forEachChild(const JsonValue& parent, Use use) {
    parent.forEachChild(
        [](JsonValue& child, void* data) {
            (*static_cast<Use*>(data))(child);
            return true;
        },
        &use, false);
}

template <typename Answers, typename Find>
const std::string* answer(Answers& answers, std::string_view query, Find find) {
    const auto [number, isNew] = answers.queries.add(query);
    if (isNew) {
        answers.results.push_back(find());
    }
    return answers.results[number];
}

void reportLost(std::set<std::string>& lost, const TypeFields& fields, const char* what) {
    const std::string line = "Error:" + joined(fields, '|') + what;
    lost.insert(line);
    hextlog::exportLog().writeText(line + "\n");
}

}  // namespace

std::string joined(const TypeFields& fields, char separator) {
    std::string text(fields[0]);
    for (std::size_t i = 1; i < fields.size(); ++i) {
        (text += separator) += fields[i];
    }
    return text;
}

void SkeyTable::addRow(std::string_view row) {
    constexpr std::size_t keyFields = 6;
    if (row.empty() || row.front() == ';') {
        return;
    }
    const std::vector<std::string_view> fields = split(row);
    if (fields.size() <= keyFields) {
        return;
    }
    Key key;
    std::copy_n(fields.begin(), keyFields, key.begin());
    rows_[key] = fields[keyFields];
}

struct SkeyTable::Best {
    int score = noMatch;
    const std::string* skey = nullptr;
};

// Rows stand in field order, so those of one item are neighbours.
void SkeyTable::scoreRowsOf(std::string_view item, const TypeFields& query, Best& best) const {
    const int itemScore = item == query[0] ? 1 : 0;
    for (auto row = rows_.lower_bound(TypeFields{item}); row != rows_.end() && row->first[0] == item; ++row) {
        const int score = rowScore(row->first, query, itemScore);
        if (score > best.score) {
            best = {score, &row->second};
        }
    }
}

const std::string* SkeyTable::find(const TypeFields& query) const {
    const auto exact = rows_.find(query);
    if (exact != rows_.end()) {
        return &exact->second;
    }
    Best best;
    const auto [first, second] = std::minmax(query[0], anything);
    scoreRowsOf(first, query, best);
    if (second != first) {
        scoreRowsOf(second, query, best);
    }
    return best.skey;
}

const std::string* GtypeTable::find(std::string_view skey) const {
    const auto exact = gtypes_.find(skey);
    if (exact != gtypes_.end()) {
        return &exact->second;
    }
    const std::string* best = nullptr;
    int bestScore = 0;
    for (const auto& [pattern, gtype] : gtypes_) {
        const int score = patternScore(pattern, skey);
        if (score > bestScore) {
            bestScore = score;
            best = &gtype;
        }
    }
    return best;
}

void TypeMapping::loadSkeys() {
    skeys_.clear();
    skeyAnswers_ = {};
    JsonValue config = loadProjectConfig();
    forEachChild(config["skey"], [this](JsonValue& row) { skeys_.addRow(row.stringValue()); });
}

void TypeMapping::loadGtypes() {
    gtypes_.clear();
    gtypeAnswers_ = {};
    JsonValue config = loadProjectConfig();
    forEachChild(config["type"], [this](JsonValue& member) { gtypes_.add(member.name(), member.stringValue()); });
}

std::string TypeMapping::skeyOf(const TypeFields& fields) {
    const std::string* found = answer(skeyAnswers_, joined(fields, '\0'), [&] { return skeys_.find(fields); });
    if (found == nullptr) {
        reportLost(lostSkeys_, fields, "不存在该类型到skey的转换");
        return {};
    }
    return *found;
}

std::string TypeMapping::gtypeOf(const TypeFields& fields) {
    const std::string skey = skeyOf(fields);
    const std::string* found = answer(gtypeAnswers_, skey, [&] { return gtypes_.find(skey); });
    if (found == nullptr) {
        reportLost(lostGtypes_, fields, "不存在GType");
        return {};
    }
    return *found;
}

}  // namespace naming
