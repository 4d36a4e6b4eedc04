// The file formats that plants come from: a row for each. A format is told by a file's first bytes or its name, and its
// source reads the file into a builder, knowing nothing of the other files of the plant nor of the model's memory.
//
// loadPlant (plant/model.h) takes the files of a plant one by one, in the order in which they are named: it opens the
// file, finds the row that recognises it and lets the row's source tell what is in it; when all are told it lets those
// tell that waited for all files of theirs, and finishes the model. A new format is a folder beside json/ and a row in
// load.cpp.
#pragma once

#include "plant/building/memory_builder.h"
#include "plant/model.h"
#include "plant/refusal.h"
#include "sources/byte_source.h"

#include <filesystem>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace plant {

// What the files of a plant share.
struct SharedPlant {
    ModelBuilder& builder;  // what other files told stands in it already
    std::vector<LoadRemark>& remarks;
    // The world in which sources of files without one put their sites; 0 until the first of them has told it.
    ObjectId world = 0;
};

// Files of one format that are told together, once all have been read: what they hold belongs to each other across
// files.
class FileGroup {
public:
    virtual ~FileGroup() = default;
    FileGroup(const FileGroup&) = delete;
    FileGroup& operator=(const FileGroup&) = delete;
    virtual void tell(SharedPlant& plant) = 0;

protected:
    FileGroup() = default;
};

// One file on its way into the model; everything lives as long as the call of `read`, but for `placeOf`.
struct SourceFile {
    std::filesystem::path path;  // in messages, and where companions of the file stand; text in memory has a plain name
    ByteSource& bytes;           // from the start of the file
    SharedPlant& plant;
    MemoryBuilder* memory;  // the builder where it makes a model in memory; null where it writes a model file
    std::unique_ptr<FileGroup>& group;  // of its format; null until a file makes one
    // Says where a record of this file stands, numbered from 0 in the file. A source whose records do not stand as
    // those of a model file do gives its own before it tells the first; it is called until the model is finished.
    PlaceOfRecord placeOf = placeInModelFile;
};

struct SourceFormat {
    std::string_view name;
    // `start` is the first `startSize` bytes of the file, or all of a shorter one.
    bool (*recognises)(std::string_view start, const std::filesystem::path& path);
    // Tells all of the file, but does not finish the model. Throws a Refusal with a place within the file.
    void (*read)(SourceFile& file);
};
inline constexpr std::size_t startSize = 4096;

// A file that none recognises goes to the first one, which says what it misses.
std::span<const SourceFormat> sourceFormats();

}  // namespace plant
