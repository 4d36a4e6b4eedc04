// The text of the exception that a call raises; "none" without one.
#pragma once

#include <exception>
#include <string>

template <typename Exception = std::exception, typename Call>
std::string failureOf(Call&& call) {
    try {
        call();
    } catch (const Exception& failure) {
        return failure.what();
    }
    return "none";
}
