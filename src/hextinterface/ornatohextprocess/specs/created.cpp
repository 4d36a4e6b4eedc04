#include "hextinterface/ornatohextprocess/specs/created.h"

std::unordered_set<std::string>& createdSpcos() {
    static std::unordered_set<std::string> names;
    return names;
}

std::set<std::string, std::less<>>& createdIspecs() {
    static std::set<std::string, std::less<>> names;
    return names;
}
