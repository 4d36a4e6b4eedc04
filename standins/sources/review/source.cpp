#include "sources/review/source.h"

#include "plant/refusal.h"
#include "sources/attributes/index.h"
#include "sources/mapped_file.h"
#include "sources/review/element_teller.h"
#include "sources/review/file.h"
#include "sources/text_decoder.h"
#include "sources/world.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace plant::review {

namespace {

std::string inCapitals(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return text;
}

bool beginsAsAttributes(const std::filesystem::path& path) {
    try {
        return attributes::isAttributeText(MappedFile(path).bytes().substr(0, 64));
    } catch (const Refusal&) {
        return false;
    }
}

std::string stemOf(const std::string& name) {
    return std::filesystem::path(name).stem().string();
}

void tellWorldOf(File& file, ModelBuilder& builder, ObjectId& world) {
    TextDecoder decoder;
    const std::string project(decoder.decode(trimmed(file.survey.project)));
    const std::string name = project.empty() ? stemOf(file.name) : project;
    const std::string model(decoder.decode(trimmed(file.survey.model)));
    tellWorld(name, model.empty() ? name : model, builder, world);
}

// Blocks that the tree has no place for: the header, and a root that the groups do not know.
void tellLeftBlocks(File& file, const Tree& tree) {
    if (file.index == nullptr) {
        return;
    }
    std::vector<bool> isTaken(file.index->blocks().size());
    for (const Node& node : tree.nodes()) {
        if (node.block != attributes::noBlock) {
            isTaken[node.block] = true;
        }
    }
    for (std::size_t i = 0; i < isTaken.size(); ++i) {
        if (isTaken[i]) {
            continue;
        }
        const attributes::Block& block = file.index->blocks()[i];
        ++file.report->balance("blocks").told;
        file.report->balance("attributes").told += block.attributes;
        file.tellLine("attributes.block-without-element", SourceGrade::Note, block.line,
                      "a block that is no element of the plant; left out with its attributes");
    }
}

void tellFallback(const File& file) {
    if (file.decoder.fellBack()) {
        file.report->tell("text.not-utf8", SourceGrade::Note, {file.name, "texts that are not UTF-8; read as Latin-1"});
    }
}

}  // namespace

std::filesystem::path attributesBeside(const std::filesystem::path& rvm) {
    const std::string stem = inCapitals(rvm.stem().string());
    const std::filesystem::path folder = rvm.has_parent_path() ? rvm.parent_path() : std::filesystem::path(".");
    std::vector<std::filesystem::path> found;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        const std::string extension = inCapitals(entry.path().extension().string());
        const bool isText = extension == ".TXT" || extension == ".ATT";
        if (isText && inCapitals(entry.path().stem().string()) == stem && beginsAsAttributes(entry.path())) {
            found.push_back(entry.path());
        }
    }
    // One that is spelled alike comes first.
    std::sort(found.begin(), found.end(), [&](const auto& a, const auto& b) {
        const bool isA = a.stem() == rvm.stem();
        const bool isB = b.stem() == rvm.stem();
        return isA != isB ? isA : a < b;
    });
    return found.empty() ? std::filesystem::path() : found.front();
}

void tellReview(const Input& input, ModelBuilder& builder, ObjectId& world, SourceReport& report) {
    File file;
    file.bytes = input.rvm;
    file.name = input.name;
    file.textName = input.attributesName;
    file.report = &report;
    file.survey = rvm::surveyRvm(input.rvm, input.name, report);
    std::unique_ptr<attributes::Index> index;
    if (!input.attributes.empty()) {
        index = std::make_unique<attributes::Index>(input.attributes, input.attributesName, report);
        file.index = index.get();
    }
    Tree tree(input.rvm, file.survey, file.index);
    tellWorldOf(file, builder, world);
    for (Node& node : tree.nodes()) {
        node.id = builder.newId();
    }
    const Piping piping(tree, file.index, builder);
    ElementTeller(file, tree, piping, builder).tell(world, stemOf(input.name));
    report.balance("groups").read += file.survey.groups.size();
    tellLeftBlocks(file, tree);
    tellFallback(file);
}

}  // namespace plant::review
