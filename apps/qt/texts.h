// Texts between host and Qt.
#pragma once

#include <QString>
#include <string>
#include <string_view>

// A text of the code page.
QString fromCodePage(std::string_view text);
std::string toCodePage(const QString& text);
inline QString fromWide(std::u16string_view text) {
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

// The host's filter "Text|pattern|Text|pattern||" as Qt's "Text (pattern);;Text (pattern)". A pattern that stands in
// the text already is not repeated.
QString qtFilter(const std::string& hostFilter);
