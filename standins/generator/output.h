// JSON text of a generated plant on its way to a file or a string.
#pragma once

#include "tolmar/ge.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace plant::generator {

// Gathers text in one buffer that is handed on when it is full and then used again. Texts are written as they are:
// nothing that the generator makes needs escaping.
class Output {
public:
    using Sink = std::function<bool(std::string_view)>;
    explicit Output(Sink sink);
    // From here on the text of every object passes through `rewrite` when it is complete.
    using Rewrite = std::function<void(std::string& object)>;
    void rewriteObjects(Rewrite rewrite) { rewrite_ = std::move(rewrite); }

    // The comma and line end before every object but the first; hands a full buffer on.
    void beginObject();
    // Behind the last object.
    void endObject();
    void flush();
    // The sink refused something; from then on text is dropped.
    bool failed() const { return failed_; }

    Output& text(std::string_view literal) {
        buffer_.append(literal);
        return *this;
    }
    Output& whole(std::int64_t value);
    // At most three decimals, without trailing zeros.
    Output& number(double value);
    Output& point(const TlGePoint3d& p);
    // At most six decimals.
    Output& direction(const TlGeVector3d& v);

    // Members of an object, each with the comma before it.
    Output& member(std::string_view name, std::string_view value);
    Output& member(std::string_view name, std::int64_t value);
    // A whole number as a text, as ids stand in attributes.
    Output& memberAsText(std::string_view name, std::int64_t value);

private:
    void decimals(std::int64_t value, std::int64_t unit);

    Sink sink_;
    std::string buffer_;
    Rewrite rewrite_;
    std::string object_;
    std::size_t objectStart_ = 0;  // 0: no object is open
    bool first_ = true;
    bool failed_ = false;
};

}  // namespace plant::generator
