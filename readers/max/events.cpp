#include "readers/max/events.h"

#include "readers/object.h"

#include <charconv>
#include <cmath>
#include <expat.h>

namespace readers::max {

namespace {

constexpr std::string_view declaration = "<?xml version='1.0' encoding='utf-8' ?>";
constexpr std::size_t bytesAtOnce = 1U << 20U;

// Any byte is a character of it, whatever the code page of the file: what matters is ASCII in all of them.
constexpr const char* anyBytes = "ISO-8859-1";

template <typename Number>
bool readWhole(std::string_view text, Number& number) {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return !text.empty() && result.ec == std::errc() && result.ptr == text.data() + text.size();
}

}  // namespace

bool readNumber(std::string_view text, std::size_t& number) {
    return readWhole(text, number);
}
bool readNumber(std::string_view text, std::int64_t& number) {
    return readWhole(text, number);
}

bool readNumber(std::string_view text, double& number) {
    return readWhole(text, number) && std::isfinite(number);
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

MaxFile::MaxFile() : parser_(XML_ParserCreate(anyBytes)) {
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(parser_.get(), onStart, onEnd);
    XML_SetStartDoctypeDeclHandler(parser_.get(), onDocumentType);
}
MaxFile::~MaxFile() = default;

void MaxFile::FreeParser::operator()(XML_ParserStruct* parser) const {
    XML_ParserFree(parser);
}

void MaxFile::open(std::string_view bytes) {
    rest_ = bytes;
    isOpen_ = true;
    if (!bytes.starts_with(declaration)) {
        add(1, "does not begin with the processing instruction of such a file");
    }
}

bool MaxFile::readPiece() {
    if (!isOpen_) {
        return false;
    }
    const std::string_view piece = rest_.substr(0, bytesAtOnce);
    rest_.remove_prefix(piece.size());
    const bool isGood =
        XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()), rest_.empty() ? 1 : 0) == XML_STATUS_OK;
    if (!isGood && !isStopped_) {
        explainFailure();
    }
    isOpen_ = isGood && !rest_.empty();
    return isOpen_;
}

Findings MaxFile::read(std::string_view bytes) {
    open(bytes);
    while (readPiece()) {
    }
    return std::move(findings_);
}

void MaxFile::explainFailure() {
    const XML_Error error = XML_GetErrorCode(parser_.get());
    addLast(error == XML_ERROR_JUNK_AFTER_DOC_ELEMENT ? "there is not one root element" : XML_ErrorString(error));
}

std::size_t MaxFile::line() const {
    return static_cast<std::size_t>(XML_GetCurrentLineNumber(parser_.get()));
}

// Nobody reads thousands.
void MaxFile::add(std::size_t line, const std::string& text) {
    if (findings_.size() < mostFindings) {
        findings_.push_back({atLine(line), text});
    } else if (findings_.size() == mostFindings) {
        findings_.push_back({{}, "further faults are not listed"});
    }
}

// Why the reading ends, however much was found before.
void MaxFile::addLast(const char* why) {
    findings_.push_back({atLine(line()), why});
}

void MaxFile::stop(const char* why) {
    addLast(why);
    isStopped_ = true;
    XML_StopParser(parser_.get(), XML_FALSE);
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

}  // namespace readers::max
