// Host entities on their way into a model file. Their serialised form is the text of a JSON object and stands in the
// file as it is; what is no such text, or more than a reader takes, goes out as a text in quotes.
#pragma once

#include <memory>
#include <string_view>

namespace plant {

class EntityCheck {
public:
    EntityCheck();
    ~EntityCheck();
    EntityCheck(const EntityCheck&) = delete;
    EntityCheck& operator=(const EntityCheck&) = delete;

    // Whether a serialised entity, any bytes, can stand in a model file as an object.
    bool canStand(std::string_view serial);

private:
    struct Parser;
    std::unique_ptr<Parser> parser_;
};

}  // namespace plant
