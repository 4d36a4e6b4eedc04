// A plant object in both documents of MAXOUT.
#pragma once

#include "max/document.h"
#include "max/script.h"
#include "platform/objects.h"

#include <cstdint>
#include <string>

namespace maxfile {

// An element in each document, or null in both.
struct ElementPair {
    XmlNode* geometry = nullptr;
    XmlNode* properties = nullptr;
};

// The two texts that the user enters.
struct ProjectCodes {
    std::string project;
    std::string station;
};

class MaxObjectWriter {
public:
    // The documents and the texts must outlive the writer.
    MaxObjectWriter(MaxDocument& geometry, MaxDocument& properties, const ProjectCodes& codes)
        : geometry_(geometry), properties_(properties), codes_(codes) {}

    // Adds the object to both documents under one id; an object whose script does not load, or that has no shape, is
    // left out of the document in question and goes into the run report.
    void write(const HxDbSmrtlnEntity& object, const ElementPair& parents, std::int64_t id);

private:
    void writeGeometry(const HxDbSmrtlnEntity& object, XmlNode& parent, std::int64_t id);
    // The group of the object in one of the two forms. False when the object is passed over; a null group stands for
    // an object without triangles.
    bool makeMesh(const HxDbSmrtlnEntity& object, ScriptedObject& script, XmlNode*& group);
    bool makeSpline(const HxDbSmrtlnEntity& object, ScriptedObject& script, XmlNode*& group);
    XmlNode* startGroup(const char* name, const HxGePoint3D* center);
    void addColor(XmlNode& group, int colorIndex);
    void addPoint(XmlNode& group, const char* type, std::size_t index, const HxGePoint3D& point);

    void writeProperties(const HxDbSmrtlnEntity& object, XmlNode& parent, std::int64_t id);
    void addRow(XmlNode& group, const PropertyRow& row);

    MaxDocument& geometry_;
    MaxDocument& properties_;
    const ProjectCodes& codes_;
    MaxScript script_;
    Mesh mesh_;
    std::string text_;
};

}  // namespace maxfile
