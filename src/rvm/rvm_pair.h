// An RVM file and its attribute file, open together.
#pragma once

#include "rvm/attribute_file.h"
#include "rvm/primitive_writer.h"
#include "rvm/rvm_file.h"
#include "tolmar/file.h"

#include <string>
#include <string_view>

namespace rvm {

struct Options {
    bool compat = false;          // for readers that are stricter than the format
    bool expandBranches = false;  // pipelines open into their branches
};

class RvmPair {
public:
    // Opens the base path with ".rvm" and ".txt". A file that cannot be opened stands in the run report, and writing to
    // it does nothing.
    RvmPair(const std::string& basePath, const Options& options);
    // The same on files that are open already.
    RvmPair(tolmar::OutputFile rvmFile, tolmar::OutputFile textFile, const Options& options);

    void writeHeader();
    void writeAttributeHeader();
    // Completes the RVM file by its last chunk.
    void writeEnd() { rvm.writeEnd(); }
    // False when either file is not whole.
    bool close();

private:
    tolmar::OutputFile rvmFile_;
    tolmar::OutputFile textFile_;

public:
    const Options options;
    RvmFile rvm;
    AttributeFile text;
    PrimitiveWriter primitives;
};

}  // namespace rvm
