// A folder of macro files of HEXTOUT, read in the order in which the target runs them: where its elements are created
// and named.
//
//   line = "NEW " type " /" name            creates an element, a specification or a user attribute ("UDA")
//        | "OLD " ["type "] "/" name        enters an element or a row
//        | type "  */" name "  " columns    a row of the specification in hand; columns that begin with "/" refer
//        | ":" attribute " " value          sets a user attribute
//        | "!" variable " = " value
//        | ... "!!ORNA" function "(" arguments ")"
//        | ("BSPEC" | "HREF" | "TREF") " /" name
//
// Other lines say nothing about names. Texts are in the code page of the files.
#pragma once

#include "readers/object.h"

#include <filesystem>

namespace readers::hext {

enum class Mention {
    Created,
    Referred,
    Entered,  // an element or a row
    RowCreated,
    RowReferred,
    AttributeDefined,
    AttributeUsed,
};

// What a line says about a name. Texts live until the call ends.
struct NameMention {
    Mention what;
    std::string_view name;  // of a row with that of its specification in front, a slash between
    std::string_view type;  // of what is created: the type behind NEW, or the macro's function
    std::string place;      // "file:line"
};
using MentionVisitor = std::function<void(const NameMention& mention)>;

// Reads every file of the folder that is there.
void readFolder(const std::filesystem::path& folder, const MentionVisitor& visit, Findings& findings);

// What is created, each by itself: names alone, without tree, attributes and shapes.
void readObjects(const std::filesystem::path& folder, ToUtf8 toUtf8, const ObjectVisitor& visit, Findings& findings);

}  // namespace readers::hext
