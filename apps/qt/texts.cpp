#include "qt/texts.h"

#include "tolmar/code_page.h"

#include <QStringList>

QString fromCodePage(std::string_view text) {
    return QString::fromStdString(tolmar::toUtf8(std::string(text)));
}

std::string toCodePage(const QString& text) {
    return tolmar::fromUtf8(text.toStdString());
}

QString qtFilter(const std::string& hostFilter) {
    const QStringList parts = fromCodePage(hostFilter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size() && !parts[i].isEmpty(); i += 2) {
        QString text = parts[i];
        if (const qsizetype bracket = text.indexOf('('); bracket >= 0) {
            text.truncate(bracket);
        }
        QString patterns = parts[i + 1];
        filters += text.trimmed() + " (" + patterns.replace(';', ' ') + ")";
    }
    return filters.join(";;");
}
