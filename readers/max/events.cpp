#include "readers/max/events.h"

#include <algorithm>
#include <charconv>
#include <expat.h>
#include <memory>

namespace maxcheck {

namespace {

constexpr std::string_view declaration = "<?xml version='1.0' encoding='utf-8' ?>";
constexpr std::size_t mostFindings = 100;
constexpr std::size_t bytesAtOnce = 1U << 20U;

// A tree has at most 200 levels, and three more come below an object.
constexpr std::size_t deepestTree = 210;

// Any byte is a character of it, whatever the code page of the file: what matters is ASCII in all of them.
constexpr const char* anyBytes = "ISO-8859-1";

template <typename Number>
bool readWhole(std::string_view text, Number& number) {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return !text.empty() && result.ec == std::errc() && result.ptr == text.data() + text.size();
}

struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

}  // namespace

bool readNumber(std::string_view text, std::size_t& number) {
    return readWhole(text, number);
}
bool readNumber(std::string_view text, std::int64_t& number) {
    return readWhole(text, number);
}

const char* Element::find(std::string_view attribute) const {
    for (const char* const* at = attributes_; *at != nullptr; at += 2) {
        if (attribute == *at) {
            return at[1];
        }
    }
    return nullptr;
}

std::string_view Element::value(std::string_view attribute) const {
    const char* text = find(attribute);
    return text != nullptr ? std::string_view(text) : std::string_view();
}

std::vector<std::string> MaxFile::read(std::string_view bytes) {
    const std::unique_ptr<XML_ParserStruct, FreeParser> parser(XML_ParserCreate(anyBytes));
    parser_ = parser.get();
    XML_SetUserData(parser_, this);
    XML_SetElementHandler(parser_, onStart, onEnd);
    XML_SetStartDoctypeDeclHandler(parser_, onDocumentType);
    if (!bytes.starts_with(declaration)) {
        add(1, "does not begin with the processing instruction of such a file");
    }
    bool isGood = true;
    do {
        const std::string_view piece = bytes.substr(0, bytesAtOnce);
        bytes.remove_prefix(piece.size());
        isGood =
            XML_Parse(parser_, piece.data(), static_cast<int>(piece.size()), bytes.empty() ? 1 : 0) == XML_STATUS_OK;
    } while (isGood && !bytes.empty());
    if (!isGood && !isStopped_) {
        explainFailure();
    }
    parser_ = nullptr;
    return std::move(findings_);
}

void MaxFile::explainFailure() {
    const XML_Error error = XML_GetErrorCode(parser_);
    addLast(error == XML_ERROR_JUNK_AFTER_DOC_ELEMENT ? "there is not one root element" : XML_ErrorString(error));
}

std::size_t MaxFile::line() const {
    return static_cast<std::size_t>(XML_GetCurrentLineNumber(parser_));
}

// Nobody reads thousands.
void MaxFile::add(std::size_t line, const std::string& text) {
    if (findings_.size() < mostFindings) {
        findings_.push_back("line " + std::to_string(line) + ": " + text);
    } else if (findings_.size() == mostFindings) {
        findings_.emplace_back("further faults are not listed");
    }
}

// Why the reading ends, however much was found before.
void MaxFile::addLast(const char* why) {
    findings_.push_back("line " + std::to_string(line()) + ": " + why);
}

void MaxFile::stop(const char* why) {
    addLast(why);
    isStopped_ = true;
    XML_StopParser(parser_, XML_FALSE);
}

void MaxFile::onStart(void* self, const char* name, const char** attributes) {
    static_cast<MaxFile*>(self)->start({name, attributes});
}
void MaxFile::onEnd(void* self, const char*) {
    static_cast<MaxFile*>(self)->end();
}
void MaxFile::onDocumentType(void* self, const char*, const char*, const char*, int) {
    static_cast<MaxFile*>(self)->stop("a document type has no place in such a file");
}

// Calls that the parser had on its way still come after it was stopped.
void MaxFile::start(const Element& element) {
    if (isStopped_) {
        return;
    }
    if (depth_ == deepestTree) {
        return stop("elements nested deeper than any tree");
    }
    const std::size_t level = depth_++ - objects_;
    if (level == 0 && (depth_ == 1 || element.name() == "object")) {
        ++objects_;
        startObject(element);
    } else {
        startInner(element, level);
    }
}

void MaxFile::end() {
    if (isStopped_) {
        return;
    }
    if (--depth_ < objects_) {
        --objects_;
        endObject();
    } else {
        endInner(depth_ - objects_);
    }
}

}  // namespace maxcheck
