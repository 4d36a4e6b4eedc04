#include "platform/left_out.h"

#include "tolmar/run_report.h"
#include "tolmar/text.h"

LeftOutThing::LeftOutThing(const HxDbObject* leftOut, std::string_view kind)
    : LeftOutThing(leftOut, leftOut != nullptr ? tolmar::textOrEmpty(leftOut->getDisplayName()) : "", kind) {}

LeftOutThing::LeftOutThing(const HxDbObject* leftOut, std::string_view shownName, std::string_view kind)
    : object(leftOut), id(leftOut != nullptr ? leftOut->objectId() : HxDbObjectId()), name(shownName), what(kind) {}

LeftOutThing::LeftOutThing(HxDbObjectId leftOut, std::string_view shownName, std::string_view kind)
    : id(leftOut), name(shownName), what(kind) {}

void reportLeftOut(const LeftOutThing& thing, const LeftOutReason& why) {
    tolmar::runReport().passedOver(thing.id.toInt(), thing.name, thing.what, why.text);
}

void reportLeftOut(const HxDbObject* object, std::string_view what, const LeftOutReason& why) {
    reportLeftOut(LeftOutThing(object, what), why);
}

void reportLeftOutNode(const HxDbTreeNode& node, std::string_view what, const LeftOutReason& why) {
    reportLeftOut(LeftOutThing(node.getTreeNodeValue(), tolmar::textOrEmpty(node.getName()), what), why);
}
