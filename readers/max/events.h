// The two files of MAXOUT element by element, so that reading one takes the memory of its depth and not of its size.
//
//   file        = "<?xml version='1.0' encoding='utf-8' ?>"  object
//   object      = <object id Name [ProjectCode stationname]> { group } { object } </object>
//   group       = <meshGroup pointNum faceNum colorR colorG colorB [insptX insptY insptZ]> { point } { face }
//               | <splineGroup pointNum partNum partSize colorR colorG colorB [inspt...]> { point }
//               | <propertyGroup Name="ORNA"> { <key_value key value description/> }
//   point       = <point [type] index pointX pointY pointZ/>
//   face        = <face index pointX pointY pointZ/>, the numbers of its points
//
// The geometry file (.orna) has the first two kinds of groups, the property file (.xml) the third. The bytes are those
// of a code page, whatever the declaration says; they are read as any code page whose ASCII characters are ASCII.
#pragma once

#include "readers/finding.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct XML_ParserStruct;

namespace readers::max {

// A number that is the whole text; false otherwise.
bool readNumber(std::string_view text, std::size_t& number);
bool readNumber(std::string_view text, std::int64_t& number);
bool readNumber(std::string_view text, double& number);  // finite

// An element as its start tag tells it. Its texts live until the call ends that it came with; bytes above 127 are
// written in two, alike in every file.
class Element {
public:
    Element(const char* name, const char* const* attributes) : name_(name), attributes_(attributes) {}
    std::string_view name() const { return name_; }
    bool has(std::string_view attribute) const { return find(attribute) != nullptr; }
    // Empty when there is no such attribute.
    std::string_view value(std::string_view attribute) const;

private:
    const char* find(std::string_view attribute) const;

    const char* name_;
    const char* const* attributes_;
};

// Reads a file and calls its heirs for each element. Objects are the root and the elements "object" in objects; what
// else stands in an object has the level 0 there, what stands in that the level 1, and so on.
class MaxFile {
public:
    MaxFile();
    virtual ~MaxFile();
    MaxFile(const MaxFile&) = delete;
    MaxFile& operator=(const MaxFile&) = delete;

    // The whole of a file: what is wrong with it, with the line; at most a hundred findings. Once for each object.
    Findings read(std::string_view bytes);
    // The same piece by piece. `bytes` must outlive the reading; readPiece is false when there is no more.
    void open(std::string_view bytes);
    bool readPiece();
    const Findings& findings() const { return findings_; }

protected:
    virtual void startObject(const Element& object) = 0;
    virtual void endObject() {}
    virtual void startInner(const Element&, std::size_t /*level*/) {}
    virtual void endInner(std::size_t /*level*/) {}

    // Of the event in hand.
    std::size_t line() const;
    void add(const std::string& text) { add(line(), text); }
    void add(std::size_t line, const std::string& text);

private:
    struct FreeParser {
        void operator()(XML_ParserStruct* parser) const;
    };

    static void onStart(void* self, const char* name, const char** attributes);
    static void onEnd(void* self, const char* name);
    static void onDocumentType(void* self, const char*, const char*, const char*, int);
    void start(const Element& element);
    void end();
    void stop(const char* why);
    void explainFailure();
    void addLast(const char* why);

    std::unique_ptr<XML_ParserStruct, FreeParser> parser_;
    std::string_view rest_;
    bool isOpen_ = false;
    Findings findings_;
    std::size_t depth_ = 0;
    std::size_t objects_ = 0;  // how many of the open elements are objects
    bool isStopped_ = false;
};

}  // namespace readers::max
