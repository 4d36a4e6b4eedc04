// Output files of the host: binary, or text whose lines end in carriage return and line feed on every system.
//
// Writing goes through a large buffer, and to NAME.part beside the file's place. close() puts a file that is whole in
// its place, in one step. A file that fails, or that is destroyed before it was closed (an exception, a cancel), leaves
// what stood at its place as it was; what there is of it is kept as NAME.incomplete. A failed write makes the file fail
// for good; whoever owns the file asks close() or failed(). The run report is told either way: written with its size,
// or failed with the reason. Devices and pipes are written directly. A file that is added to (TextAppend) is added to
// where it stands; of an addition that fails nothing stays.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace tolmar {

enum class FileMode { Binary, Text, TextAppend };

// How a line of a text file ends.
inline constexpr std::string_view lineEnd = "\r\n";

// Where bytes go. Tests put a failing or a memory sink here.
class Sink {
public:
    virtual ~Sink() = default;
    // False when not all of it was written.
    virtual bool write(const char* data, std::size_t size) = 0;
    // Overwrites earlier bytes; the position for write stays at the end.
    virtual bool writeAt(std::uint64_t offset, const char* data, std::size_t size) = 0;
    // Drops everything from `offset` on.
    virtual bool truncate(std::uint64_t offset) = 0;
    virtual bool close() = 0;
};

class OutputFile {
public:
    OutputFile();
    // Opens at once; see open().
    OutputFile(std::string_view codePagePath, FileMode mode);
    // For tests: writes to the sink under a name.
    OutputFile(std::unique_ptr<Sink> sink, FileMode mode, std::string name = "sink");
    ~OutputFile();
    OutputFile(OutputFile&&) noexcept;
    OutputFile& operator=(OutputFile&&) noexcept;

    // Opens for writing, to replace what is there (TextAppend keeps it). False when it cannot, also when another run is
    // writing the same file or it is one that the run must not touch (tolmar/protected_files.h), which makes the run
    // refused; a file that was open is closed first.
    bool open(std::string_view codePagePath, FileMode mode);
    bool isOpen() const;
    // Text modes turn every "\n" into CR LF. Nothing happens on a file that is not open.
    void write(std::string_view data);
    // Text whose lines end in `lineEnd` already: it goes out as it is.
    void writeLines(std::string_view data);
    // Bytes written so far, as they stand in the file.
    std::uint64_t size() const;
    // Binary files only: patches earlier bytes, or drops everything from `offset` on.
    void writeAt(std::uint64_t offset, std::string_view data);
    void truncate(std::uint64_t offset);
    bool failed() const;
    // Makes the file fail for a reason that lies elsewhere.
    void fail(std::string_view why);
    // Ends a file before its end, as its destructor does, for a reason of which the command tells itself how it ends
    // it.
    void abandon(std::string_view why);
    // For files that nobody could use in part: one that fails is deleted instead of being set aside.
    void deleteWhenFailed();
    // Flushes, closes and puts the file in its place; false when any of it failed. True on a file that is not open. To
    // be called at the good end of the work: a file that is not closed counts as not finished.
    bool close();

private:
    struct State;
    std::unique_ptr<State> state_;
};

// A closed file that somebody else wrote and that is not whole: it gets ".incomplete" behind its name, as a file does
// that fails here, and the run report has it among the failed.
void setFileAside(std::string_view codePagePath, std::string_view why);

// Reads a whole file; false when it cannot be read.
bool readFile(std::string_view codePagePath, std::string& bytes);

}  // namespace tolmar
