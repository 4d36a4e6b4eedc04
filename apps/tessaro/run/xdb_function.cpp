#include "tessaro/run/xdb_function.h"

#include "tessaro/terminal/json_text.h"
#include "tolmar/code_page.h"
#include "tolmar/file.h"
#include "tolmar/host_ui.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using tolmar::RunOutcome;
using tolmar::runReport;

using Texts = std::vector<std::string>;
using Colors = std::vector<std::uint64_t>;
using Doubles = std::vector<std::vector<double>>;
using Ints = std::vector<std::vector<int>>;
using XdbFunction = bool (*)(Texts&, Colors&, Doubles&, Ints&, Doubles&, Ints&, Texts&, int);

struct XdbArrays {
    Texts types;
    Colors colors;
    Doubles positions;
    Ints indices;
    Doubles normals;
    Ints normalIndices;
    Texts data;
};

void appendElement(std::string& out, const std::string& text) {
    appendJsonString(out, tolmar::toUtf8(text));
}
void appendElement(std::string& out, std::uint64_t value) {
    appendJsonNumber(out, value);
}

template <typename Number>
void appendElement(std::string& out, const std::vector<Number>& numbers) {
    const char* separator = "[";
    for (const Number number : numbers) {
        out += separator;
        appendJsonNumber(out, number);
        separator = ",";
    }
    out += numbers.empty() ? "[]" : "]";
}

template <typename Array>
void appendMember(std::string& out, const char* name, const Array& array) {
    out += ",\n  \"" + std::string(name) + "\": ";
    appendJsonLines(out, array, [](std::string& text, const auto& element) { appendElement(text, element); });
}

std::string jsonOf(bool result, const XdbArrays& arrays) {
    std::string text = std::string("{\n  \"result\": ") + (result ? "true" : "false");
    appendMember(text, "types", arrays.types);
    appendMember(text, "colors", arrays.colors);
    appendMember(text, "positions", arrays.positions);
    appendMember(text, "indices", arrays.indices);
    appendMember(text, "normals", arrays.normals);
    appendMember(text, "normalIndices", arrays.normalIndices);
    appendMember(text, "data", arrays.data);
    return text + "\n}\n";
}

void writeJson(const XdbCall& call, const std::string& json) {
    if (tolmar::dryRun()) {
        return;
    }
    if (!call.out.empty()) {
        tolmar::FileDialog dialog;
        dialog.defaultExtension = "xdb.json";
        tolmar::OutputFile file(*tolmar::hostUi().fileDialog(dialog), tolmar::FileMode::Binary);
        file.write(json);
        file.close();
    } else if (std::fwrite(json.data(), 1, json.size(), stdout) != json.size() || std::fflush(stdout) != 0) {
        runReport().fileFailed("standard output", "not all of it could be written");
    }
}

// A cancelled form has said why.
bool chooseManager(plant::Model* model) {
    std::string error;
    const bool isChosen = model == nullptr || plant::chooseCurrentManager(*model, error);
    if (!error.empty()) {
        runReport().ended(RunOutcome::Refused, tolmar::fromUtf8(error));
    } else if (!isChosen) {
        runReport().ended(RunOutcome::Cancelled);
    }
    return isChosen;
}

}  // namespace

void callXdbFunction(const XdbCall& call) {
    const auto function = reinterpret_cast<XdbFunction>(call.module->symbol(xdbFunctionName));
    if (function == nullptr) {
        runReport().ended(RunOutcome::Failed, "the module does not export XDBOUT");
        return;
    }
    if (!chooseManager(call.choosesFrom)) {
        return;
    }
    XdbArrays arrays;
    const bool result = function(arrays.types, arrays.colors, arrays.positions, arrays.indices, arrays.normals,
                                 arrays.normalIndices, arrays.data, call.strict ? 1 : 0);
    if (!result && runReport().outcome() == RunOutcome::Done) {
        runReport().ended(RunOutcome::Failed, "XDBOUT gave false: no current manager, or a gap in the data");
    }
    // What a cancelled call got is no answer.
    if (result || runReport().outcome() != RunOutcome::Cancelled) {
        writeJson(call, jsonOf(result, arrays));
    }
}
