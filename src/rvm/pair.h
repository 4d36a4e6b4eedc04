// An RVM file and its attribute file, open together.
#pragma once

#include "rvm/attribute_file.h"
#include "rvm/format/writer.h"
#include "rvm/shapes/primitive_writer.h"
#include "tolmar/file.h"

#include <string>
#include <string_view>

class HxDbObject;

namespace rvm {

struct Options {
    bool compat = false;          // for readers that are stricter than the format
    bool expandBranches = false;  // pipelines open into their branches
    // Whether there is a script to ask. Without one the answers are known, and a call for each object is saved.
    bool asksNames = true;
    bool asksAttributes = true;
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
    void writeEnd() { rvm_.writeEnd(); }
    // False when either file is not whole.
    bool close();

    // The name that the script gives to an object, in the code page.
    std::string nameOf(const HxDbObject* object, bool isPipelineObject) const;

    const Options& options() const { return options_; }
    RvmFile& rvm() { return rvm_; }
    AttributeFile& text() { return text_; }
    PrimitiveWriter& primitives() { return primitives_; }

private:
    tolmar::OutputFile rvmFile_;
    tolmar::OutputFile textFile_;
    Options options_;
    RvmFile rvm_;
    AttributeFile text_;
    PrimitiveWriter primitives_;
};

}  // namespace rvm
