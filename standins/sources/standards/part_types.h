// What a part of a pipeline is called in the plant model, by the words that other formats use for it.
//
// A row is one text, "keyword|key|item|itype|class|kind": the format's word for the component, its symbol key of four
// characters ("#" stands for any character, "##" at the end for any two), the attributes `item`, `itype` and `smrtln`
// of the model, and the word of the member "kind" (empty: by class and item). The first row that matches counts. "*" as
// the keyword matches every word.
#pragma once

#include "plant/model_builder.h"

#include <string>
#include <string_view>
#include <vector>

namespace plant::standards {

struct PartType {
    std::string item;
    std::string itype;
    std::string smrtln;
    PartKind kind = PartKind::Default;
};

class PartTypes {
public:
    PartTypes();
    // Puts a row before all others; false, with the reason, when its text is no row.
    bool putFirst(std::string_view row, std::string& error);
    // Null when no row matches.
    const PartType* find(std::string_view keyword, std::string_view symbolKey) const;

private:
    struct Row {
        std::string keyword;
        std::string key;
        PartType type;
    };
    static bool parse(std::string_view text, Row& row, std::string& error);

    std::vector<Row> rows_;
};

// End type of the model by the last two characters of a symbol key or an end's own word: "BW", "SW", "THD", "FLRF";
// empty for what tells none.
std::string_view endTypeOf(std::string_view word);

}  // namespace plant::standards
