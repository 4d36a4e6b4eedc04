// Finds where the elements of a long JSON array end, without reading them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace plant {

// Follows texts and brackets from a place directly within the array. What it finds holds for text that is JSON; of
// other text it may find anything, which whoever reads the elements will notice.
class ElementScanner {
public:
    struct Result {
        std::size_t lastEnd = 0;   // behind the last element, an object or array, that ends in the text; 0 for none
        std::size_t arrayEnd = 0;  // behind the bracket that closes the array; 0 when it is not there
    };
    // 64 bytes must be readable behind the text.
    static Result scan(const char* text, std::size_t size);
};

}  // namespace plant
