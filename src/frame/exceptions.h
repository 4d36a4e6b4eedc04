// Exceptions of the macro export. Whoever throws fills the text; whoever catches decides how far the failure reaches.
#pragma once

#include <exception>
#include <string>

class ExportException : public std::exception {
public:
    explicit ExportException(std::string text) : text_(std::move(text)) {}
    // The message in the code page; may be empty.
    const char* what() const noexcept override { return text_.c_str(); }

private:
    std::string text_;
};

// A letter counter has run over.
class OutOfRange final : public ExportException {
public:
    OutOfRange() : ExportException("OutOfRange") {}
};

// A standard exception with a text that is no ExportException: it ends the run and not just one element.
class RunException final : public std::exception {
public:
    explicit RunException(std::string text) : text_(std::move(text)) {}
    const char* what() const noexcept override { return text_.c_str(); }

private:
    std::string text_;
};

// `format` with every "%1%" replaced by the value.
std::string fillPlaceholder(const std::string& format, const std::string& value);
