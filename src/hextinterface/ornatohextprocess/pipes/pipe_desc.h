// The macro objects of pipe.txt: each gathers text values and writes them in one go. A value that nothing has set reads
// "unset".
#pragma once

#include "platform/geometry.h"

#include <string>
#include <string_view>

class _HextElementDesc {
public:
    _HextElementDesc() = default;
    virtual ~_HextElementDesc() = default;
    _HextElementDesc(const _HextElementDesc&) = delete;
    _HextElementDesc& operator=(const _HextElementDesc&) = delete;
    // Appends the element's lines. ExportException for a value that the target would refuse, with a message on the
    // command line.
    virtual void write(std::string& out, bool flag) const = 0;

    std::string type;
};

class _HextPipeDesc final : public _HextElementDesc {
public:
    void write(std::string& out, bool flag) const override;

    std::string name;
    std::string zone;  // name of the zone that the pipe stands in
    std::string temp = "unset";
    std::string press = "unset";
    std::string pspec = "unset";
    std::string ispec = "unset";
    std::string func;

private:
    void test() const;
};

class _HextBranchDesc final : public _HextElementDesc {
public:
    explicit _HextBranchDesc(bool alreadyCreated) : exists(alreadyCreated) {}
    // `flag`: the branch exists.
    void write(std::string& out, bool flag) const override;

    enum class End { Head, Tail };
    void setPoint(End end, const HxGePoint3D& point);
    void setDirection(End end, const HxGeVector3D& direction);
    // ExportException with an empty text for a size that holds "*".
    void setBore(End end, std::string bore);

    std::string name;
    std::string headPosition = "unset";
    std::string tailPosition = "unset";
    std::string headDirection = "unset";
    std::string tailDirection = "unset";
    std::string headBore = "unset";
    std::string tailBore = "unset";
    std::string headConnection = "unset";
    std::string tailConnection = "unset";
    std::string temp = "0";
    std::string_view lstube = "unset";  // outlives the branch
    std::string ispec = "unset";
    std::string colour = "unset";
    int endKind = -1;      // which ends are tube stops: -1 none, 0 the head, 1 the tail, 2 both
    std::string linkName;  // with both ends stops: the branch found at the tail
    bool exists;           // the branch's name has been created earlier in this file
    HxGePoint3D headPoint;
    HxGePoint3D tailPoint;
    HxGeVector3D headDirVector;
    HxGeVector3D tailDirVector;
};

// Throws ExportException "命名错误" for a name of 52 bytes or more, with "Error:create <kind> name<%s> too long" on the
// command line.
void testNameLength(std::string_view name, const char* kind);
