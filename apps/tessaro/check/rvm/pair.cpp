#include "readers/rvm/pairing.h"
#include "tessaro/check/rvm/rules.h"

#include <algorithm>

namespace check {

namespace {

using namespace readers::rvm;

constexpr std::size_t objectLevel = 4;
constexpr std::uint32_t kindsNotWritten[] = {1, 3, 6};

void onePrimitiveEach(const RvmContent& rvm, const Group& object, std::size_t line, readers::Findings& findings) {
    for (const std::uint32_t child : object.children) {
        if (rvm.groups[child].primitives.size() != 1 || !rvm.groups[child].children.empty()) {
            readers::note(findings, readers::atLine(line),
                          "group \"" + rvm.pathOf(child) + "\" does not hold just one primitive");
        }
    }
}

}  // namespace

void rvmKinds(const RvmContent& rvm, readers::Findings& findings) {
    for (const Primitive& primitive : rvm.primitives) {
        if (primitive.use == Use::Insulation) {
            readers::note(findings, readers::atByte(primitive.offset), "unknown chunk INSU");
        } else if (std::find(std::begin(kindsNotWritten), std::end(kindsNotWritten), primitive.kind) !=
                   std::end(kindsNotWritten)) {
            readers::note(findings, readers::atByte(primitive.offset),
                          "unknown primitive " + std::to_string(primitive.kind));
        }
    }
}

void rvmPair(const RvmContent& rvm, const AttributeContent& text, readers::Findings& findings) {
    const Pairing pairing = pairFiles(rvm, text);
    findings.insert(findings.end(), pairing.mismatches.begin(), pairing.mismatches.end());
    for (std::size_t i = 0; i < rvm.groups.size(); ++i) {
        const std::uint32_t element = pairing.elementOf[i];
        if (element != none && text.elements[element].level == objectLevel) {
            onePrimitiveEach(rvm, rvm.groups[i], text.elements[element].line, findings);
        }
    }
}

}  // namespace check
