#include "hextinterface/ornatohextprocess/specs/file.h"

#include "frame/exceptions.h"
#include "hextinterface/manager/name_manager.h"

SpecFile::SpecFile(const std::string& path, tolmar::FileMode mode) : file_(path, mode) {
    if (!file_.isOpen()) {
        throw ExportException(fillPlaceholder("文件 %1% 打开失败！", path));
    }
}

void SpecFile::lines(std::span<const std::string_view> all) {
    for (const std::string_view text : all) {
        line(text);
    }
}

void writeWeldWorld(SpecFile& out, NameManager& names, const std::string& name,
                    std::initializer_list<std::string_view> news) {
    out.lines({"Paragon", "OLD /*"});
    if (names.markIfNotCreated(name)) {
        out.line("NEW SPWL /", name);
        out.lines(news);
    } else {
        out.line("OLD /", name);
    }
    out.line("Specon");
}

void writeHeadingLines(SpecFile& out, std::string_view columns, std::string_view defaults) {
    out.lines({"", "HEADING", columns, "DEFAULTS", defaults});
}
