#include "sources/pcf/source.h"

#include "plant/refusal.h"
#include "sources/pcf/network.h"
#include "sources/pcf/plant_teller.h"
#include "sources/pcf/text.h"

#include <algorithm>
#include <filesystem>

namespace plant::pcf {

namespace {

constexpr std::size_t looked = 4096;

bool isOpening(const Record& record) {
    return record.key == "ISOGEN-FILES" || record.key == "PIPELINE-REFERENCE" || Units::isUnit(record) ||
           (componentKind(record.key) != nullptr && record.find("END-POINT") != nullptr);
}

}  // namespace

bool recognises(std::string_view start) {
    if (start.substr(0, looked).find('\0') != std::string_view::npos) {
        return false;
    }
    std::string text = decode(start.substr(0, looked)).utf8;
    for (const Record& record : readRecords(text)) {
        if (isOpening(record)) {
            return true;
        }
    }
    return false;
}

void Source::read(std::string_view name, std::string_view bytes) {
    Text text = decode(bytes);
    File& file = files_.emplace_back();
    file.name = name;
    file.stem = std::filesystem::path(name).stem().string();
    file.text = std::move(text.utf8);
    file.records = readRecords(file.text);
    if (std::none_of(file.records.begin(), file.records.end(), isOpening)) {
        files_.pop_back();
        refuse("no record of a piping component file (PIPELINE-REFERENCE, UNITS-BORE, PIPE, …)");
    }
    if (text.wasOtherCode) {
        report_->tell("pcf.encoding", SourceGrade::Note, {file.name, "not UTF-8; read as Windows-1252"});
    }
    if (text.hadZeros) {
        report_->tell("pcf.zeros", SourceGrade::Note, {file.name, "zero characters became blanks"});
    }
    Interpreter(file, *settings_, *report_).run();
}

void Source::tell(std::int64_t world, ModelBuilder& builder) {
    Network network(files_, *report_);
    network.build();
    PlantTeller(files_, network, *settings_, *report_).tell(world, builder);
}

}  // namespace plant::pcf
