#include "sources/review/shape_teller.h"

#include <cstdio>

namespace plant::review {

namespace {

constexpr std::string_view colorKey = "rvm.colour";
constexpr std::string_view transparencyKey = "rvm.transparency";
constexpr std::string_view obstructionTransparencyKey = "rvm.obstruction-transparency";

bool isPrimitive(rvm::Tag tag) {
    return tag == rvm::Tag::Primitive || tag == rvm::Tag::Obstruction || tag == rvm::Tag::Insulation;
}

std::string hexText(rvm::Rgb color) {
    char text[16];
    std::snprintf(text, sizeof text, "#%02X%02X%02X", color.red, color.green, color.blue);
    return text;
}

// Calls visit(chunk) for each chunk of a group's contents, with those of its own sons; visit gives where to go on.
template <typename Visit>
void eachChunk(std::string_view bytes, std::uint64_t at, std::uint64_t end, Visit visit) {
    while (at < end) {
        const rvm::Chunk chunk = rvm::chunkAt(bytes, at);
        at = visit(chunk);
    }
}

}  // namespace

int ShapeTeller::colorOf(std::uint32_t material) const {
    const bool isPlainOwn = file_->survey.isOwn && file_->survey.colors.empty();
    return file_->survey.colors.indexOf(isPlainOwn ? rvm::ownIndexOf(material) : material);
}

int ShapeTeller::colorOfGroup(std::uint32_t group) {
    if (group != lastGroup_) {
        lastGroup_ = group;
        lastColor_ = colorOf(rvm::groupFacts(file_->bytes, file_->survey.groups[group]).material);
    }
    return lastColor_;
}

void ShapeTeller::tellTransparency(std::string_view key, std::uint8_t transparency) {
    if (transparency > 0) {
        builder_->attribute(key, std::int64_t{transparency});
    }
}

void ShapeTeller::tellColor(std::uint32_t group) {
    objectColor_ = group != rvm::noGroup ? colorOfGroup(group) : 0;
    if (objectColor_ != 0) {
        builder_->color(static_cast<std::int16_t>(objectColor_));
    }
}

// It holds for everything below.
std::uint8_t ShapeTeller::transparencyOf(std::uint32_t group) const {
    std::uint8_t transparency = 0;
    for (; transparency == 0 && group != rvm::noGroup; group = file_->survey.groups[group].parent) {
        transparency = rvm::groupFacts(file_->bytes, file_->survey.groups[group]).transparency;
    }
    return transparency;
}

void ShapeTeller::tellLook(std::uint32_t group) {
    if (group == rvm::noGroup) {
        return;
    }
    const rvm::Group& one = file_->survey.groups[group];
    const std::uint32_t material = rvm::groupFacts(file_->bytes, one).material;
    if (const auto exact = file_->survey.colors.exact(material)) {
        builder_->attribute(colorKey, std::string_view(hexText(*exact)));
    }
    tellTransparency(transparencyKey, transparencyOf(group));
    tellTransparency(obstructionTransparencyKey, one.obstructionTransparency);
}

bool ShapeTeller::read(const rvm::Chunk& chunk) {
    if (!rvm::readPrimitive(file_->bytes, chunk, primitive_)) {
        return false;
    }
    if (file_->survey.isOwn) {
        rvm::adaptOwnDialect(primitive_);
    }
    return true;
}

void ShapeTeller::tellPrimitive(const rvm::Chunk& chunk, int color) {
    SourceCount& balance = file_->report->balance("primitives");
    if (!read(chunk)) {
        ++balance.told;
        return file_->tellAt("rvm.kind-unknown", SourceGrade::Loss, chunk.offset,
                             "a primitive of a kind that is not known; left out");
    }
    output_.setLook(color == objectColor_ ? 0 : color, chunk.tag != rvm::Tag::Primitive);
    const rvm::Conversion result = rvm::convertPrimitive(primitive_, output_);
    ++(rvm::isTaken(result) ? balance.taken : balance.told);
    if (result != rvm::Conversion::Taken) {
        const rvm::ConversionText told = rvm::textOf(result);
        file_->tellAt(told.code, SourceGrade::Loss, chunk.offset, told.text);
    }
}

void ShapeTeller::tellFolded(std::uint32_t group) {
    ++file_->report->balance("groups").told;
    file_->tellAt("review.group-folded", SourceGrade::Note, file_->survey.groups[group].at,
                  "a group without attributes within an element; its shape is part of the element's");
}

void ShapeTeller::tellGroup(std::uint32_t group, const std::function<bool(std::uint32_t)>& isOwn) {
    const rvm::Survey& survey = file_->survey;
    std::uint32_t next = survey.groups[group].son;
    std::vector<std::uint32_t> open{group};
    const std::uint64_t start = rvm::groupFacts(file_->bytes, survey.groups[group]).contents;
    int color = colorOfGroup(group);
    eachChunk(file_->bytes, start, survey.groups[group].end, [&](const rvm::Chunk& chunk) -> std::uint64_t {
        if (isPrimitive(chunk.tag)) {
            tellPrimitive(chunk, color);
        } else if (chunk.tag == rvm::Tag::GroupBegin) {
            const std::uint32_t son = next;
            if (isOwn(son)) {
                next = survey.groups[son].brother;
                return survey.groups[son].end;
            }
            tellFolded(son);
            open.push_back(son);
            next = survey.groups[son].son;
            color = colorOfGroup(son);
        } else if (chunk.tag == rvm::Tag::GroupEnd && !open.empty()) {
            next = survey.groups[open.back()].brother;
            open.pop_back();
            color = open.empty() ? color : colorOfGroup(open.back());
        }
        return chunk.next;
    });
}

std::vector<LoosePrimitive> ShapeTeller::loosePrimitives(std::uint32_t group) {
    std::vector<LoosePrimitive> primitives;
    const rvm::Group& whole = file_->survey.groups[group];
    if (whole.primitives == 0) {
        return primitives;
    }
    std::uint32_t next = whole.son;
    eachChunk(file_->bytes, rvm::groupFacts(file_->bytes, whole).contents, whole.end,
              [&](const rvm::Chunk& chunk) -> std::uint64_t {
                  if (chunk.tag == rvm::Tag::GroupBegin) {
                      const std::uint32_t son = next;
                      next = file_->survey.groups[son].brother;
                      return file_->survey.groups[son].end;
                  }
                  if (isPrimitive(chunk.tag)) {
                      LoosePrimitive& one = primitives.emplace_back();
                      one.offset = chunk.offset;
                      one.group = group;
                      const bool isCylinder =
                          read(chunk) && primitive_.kind == rvm::Kind::Cylinder && primitive_.placement.isFinite;
                      if (isCylinder) {
                          one.isStraight = true;
                          one.from = primitive_.placement.at(0, 0, -primitive_.p[1] / 2);
                          one.to = primitive_.placement.at(0, 0, primitive_.p[1] / 2);
                      }
                  }
                  return chunk.next;
              });
    return primitives;
}

void ShapeTeller::addLoosePrimitives(std::uint32_t group, std::vector<LoosePrimitive>& out) {
    const std::vector<LoosePrimitive> own = loosePrimitives(group);
    out.insert(out.end(), own.begin(), own.end());
    tellFolded(group);
    for (std::uint32_t son = file_->survey.groups[group].son; son != rvm::noGroup;
         son = file_->survey.groups[son].brother) {
        addLoosePrimitives(son, out);
    }
}

void ShapeTeller::tellPrimitives(std::span<const LoosePrimitive> primitives) {
    for (const LoosePrimitive& one : primitives) {
        tellPrimitive(rvm::chunkAt(file_->bytes, one.offset), colorOfGroup(one.group));
    }
}

}  // namespace plant::review
