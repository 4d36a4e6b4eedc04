#include "hextinterface/hextbasemethod/text_faults.h"

#include "hextinterface/hextbasemethod/limited_text.h"
#include "hextinterface/hextbasemethod/macro_text.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/objects.h"
#include "tolmar/text.h"

namespace {

constexpr std::string_view lineBreaks = "\r\n";

bool has(std::string_view text, std::string_view any) {
    return text.find_first_of(any) != std::string_view::npos;
}

void report(HxDbObjectId owner, std::string_view attribute, const char* why) {
    const HxDbObject* object = openAs<HxDbObject>(owner);
    const char* name = object != nullptr ? tolmar::textOrEmpty(object->getDisplayName()) : "";
    reportLeftOut({owner, name, "text"}, std::string(attribute).append(": ").append(why));
}

}  // namespace

void reportPlainText(HxDbObjectId owner, std::string_view attribute, std::string_view text) {
    if (text.find('\'') != std::string_view::npos) {
        report(owner, attribute, "a quote in it ends its argument too early");
    } else {
        reportEscapedText(owner, attribute, text);
    }
}

void reportEscapedText(HxDbObjectId owner, std::string_view attribute, std::string_view text) {
    if (has(text, lineBreaks)) {
        report(owner, attribute, "a line break splits its line");
    }
}

void reportLimitedText(HxDbObjectId owner, std::string_view attribute, std::string_view text) {
    if (text.size() > shortestLimitedText && limitedPieces(text).size() > 1) {
        report(owner, attribute, "it is cut to what an argument holds");
    }
}

void reportName(HxDbObjectId owner, std::string_view name) {
    const char* why = name.size() > maxNameLength ? "it is longer than a name may be"
                      : has(name, " \r\n")        ? "a blank or line break in it ends it wherever it is named"
                                                  : nullptr;
    if (why != nullptr) {
        reportLeftOut({owner, name, "name"}, why);
    }
}
