// Review models as a format of sources/source.h.
#pragma once

#include "sources/source.h"

namespace plant::review {

bool isReview(std::string_view start, const std::filesystem::path& path);
// Reads an RVM file and the attribute text beside it. An attribute text by itself is refused: its RVM file is to be
// named.
void readReview(SourceFile& file);

}  // namespace plant::review
