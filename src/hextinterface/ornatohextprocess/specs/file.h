// What the tables of specifications share: the file, heads, headings and rows.
#pragma once

#include "hextinterface/hextbasemethod/macro_text.h"
#include "tolmar/file.h"

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

class NameManager;

class SpecFile {
public:
    // ExportException "文件 %1% 打开失败！" with the path when it cannot be opened.
    explicit SpecFile(const std::string& path, tolmar::FileMode mode = tolmar::FileMode::Text);

    // One line of texts and integers.
    template <typename... Pieces>
    void line(const Pieces&... pieces) {
        text_.clear();
        (append(pieces), ...);
        text_ += '\n';
        file_.write(text_);
    }
    void lines(std::span<const std::string_view> all);
    void lines(std::initializer_list<std::string_view> all) { lines(std::span(all.begin(), all.size())); }
    void write(std::string_view text) { file_.write(text); }
    // Ends the file; one that is not closed is not whole.
    bool close() { return file_.close(); }

private:
    void append(std::string_view text) { text_ += text; }
    void append(int value) { appendInt(text_, value); }

    tolmar::OutputFile file_;
    std::string text_;
};

// Enters a module and its weld world: "Paragon", "OLD /*", the weld specification `name` (with `news` behind its
// "NEW SPWL" line when it is new), "Specon".
void writeWeldWorld(SpecFile& out, NameManager& names, const std::string& name,
                    std::initializer_list<std::string_view> news);

// The lines that open a new specification behind its name.
inline constexpr std::string_view plainSpecLines[] = {"MATREF =0", "FLUREF =0", "LINETYPE NULL"};

// A heading: a blank line, "HEADING", the columns, "DEFAULTS" and the defaults.
void writeHeadingLines(SpecFile& out, std::string_view columns, std::string_view defaults);
