// What an EEM file holds of a tree, by module: the shapes of objects, or the papers of P&ID.
#pragma once

#include "eem/file.h"
#include "eem/primitives.h"
#include "exportbase/json_side_file.h"
#include "frame/tree_bars.h"
#include "platform/objects.h"
#include "platform/param_list.h"
#include "platform/primaries.h"

#include <span>
#include <string>
#include <vector>

namespace eem {

// A smart object with a shape of its own: no weld and no stop.
bool isShapeObject(const HxDbObject& object);

// The two files of an export, which belong to the caller and outlive this object.
class Output {
public:
    // Asks the project's script for names and properties when it has the functions for it.
    Output(EemFile& file, JsonSideFile& side);

    EemFile& file() { return file_; }
    // The name that goes into both files; good until the next call.
    std::string_view nameOf(const HxDbObject& object);
    // The object's member of the side file, under the name that nameOf gave.
    void addMember(const HxDbObject& object, std::string_view name);

private:
    void addProperties(const HxDbObject& object);

    EemFile& file_;
    JsonSideFile& side_;
    bool asksNames_ = false;
    bool asksProperties_ = false;
    std::string name_;
    ParamList properties_;
    std::string value_;
};

class Content {
public:
    virtual ~Content() = default;
    Content(const Content&) = delete;
    Content& operator=(const Content&) = delete;

    // What stands at the start of the file.
    virtual void writeHeader() = 0;
    // A manager is met in its zone; false when its objects are not to be walked.
    virtual bool startManager(const HxDbObject& manager) = 0;
    // A smart object of the walk; `color` is that of its pipeline or of the equipment before it.
    virtual void writeObject(const HxDbSmrtlnEntity& object, int color) = 0;
    // An object of the walk that has no shape of its own.
    virtual void passOver(const HxDbObject& object) const = 0;
    // For the run report: whether an object is a loss when the walk does not come to it, and whether the walk does come
    // to an object below `parent`, which may be null.
    virtual bool isLossWhenMissed(const HxDbObject& object) const = 0;
    virtual bool isReachedBelow(const HxDbObject* parent, const HxDbObject& object) const = 0;
    // Title of the dialog, and the levels of the tree that show in it.
    virtual const char* title() const = 0;
    virtual std::span<const TreeLevel> levels() const = 0;

protected:
    Content() = default;
};

// Object blocks with the primitives of each smart object.
class ModelContent final : public Content {
public:
    explicit ModelContent(Output& output) : output_(output), encoder_(output.file()) {}
    void writeHeader() override {}
    bool startManager(const HxDbObject& manager) override;
    void writeObject(const HxDbSmrtlnEntity& object, int color) override;
    void passOver(const HxDbObject& object) const override;
    bool isLossWhenMissed(const HxDbObject& object) const override;
    bool isReachedBelow(const HxDbObject* parent, const HxDbObject& object) const override;
    const char* title() const override { return "导出REVIT"; }
    std::span<const TreeLevel> levels() const override;

private:
    bool takeShape(const HxDbSmrtlnEntity& object);
    void writeBlock(const HxDbSmrtlnEntity& object, const ObjectColor& color, std::string_view name);
    void reportPrimitives(const HxDbSmrtlnEntity& object) const;

    Output& output_;
    PrimitiveEncoder encoder_;
    HextPrimaryView shape_;  // of the object in hand
};

// Paper blocks. Smart objects are walked for the bars alone.
class PaperContent final : public Content {
public:
    explicit PaperContent(Output& output) : output_(output) {}
    void writeHeader() override { output_.file().writePaperHeader(); }
    bool startManager(const HxDbObject& manager) override;
    void writeObject(const HxDbSmrtlnEntity&, int) override {}
    void passOver(const HxDbObject&) const override {}
    bool isLossWhenMissed(const HxDbObject& object) const override;
    bool isReachedBelow(const HxDbObject* parent, const HxDbObject& object) const override;
    const char* title() const override { return "导出数据"; }
    std::span<const TreeLevel> levels() const override;

private:
    Output& output_;
};

}  // namespace eem
