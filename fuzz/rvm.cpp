// RVM files with an attribute text that fits some of their names.
#include "review.h"

namespace {

constexpr std::string_view text =
    "CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&\n"
    "NEW /S\nTYPE:=SITE\nNEW /Z\nTYPE:=ZONE\nNEW /E\nTYPE:=EQUI\nEND\nNEW /P\nTYPE:=PIPE\nNEW /P/B1\nTYPE:=BRAN\n"
    "HPOS:= E 0\nTPOS:= E 900\nNEW /V\nTYPE:=VALV\nAPOS:= E 100\nLPOS:= E 300\nABORE:=50\nEND\nEND\nEND\nEND\nEND\n";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view rvm = fuzz::asText(data, size);
    fuzz::require(fuzz::describeReview(rvm, text) == fuzz::describeReview(rvm, text));
    fuzz::describeReview(rvm, {});
    return 0;
}
