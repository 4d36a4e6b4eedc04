// The macro calls of components: one object for each exportable item of a branch.
#pragma once

#include "hextinterface/hextbasemethod/component_geometry.h"
#include "hextinterface/hextbasemethod/object_lists.h"
#include "hextinterface/manager/context.h"
#include "hextinterface/ornatohextprocess/pipes/pipe_desc.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// The pipes and welds in a row behind a component, read once for all components before and among them.
struct TubeRun {
    std::size_t from = 0;  // of the items, up to but not including `to`
    std::size_t to = 0;
    std::size_t pipesEnd = 0;  // behind its last pipe
    std::string_view lstube;   // the specification row of that pipe
};

// What an item's pipeline tells, read once for all items of one number.
struct LineFacts {
    std::string_view number;
    bool insulated = false;
    bool hasCode = false;  // an insulation code of its own
};

// What a component is filled from: the branch that it lies in, and the run.
struct BranchSource {
    const ComponentList& items;
    const BranchItems& lookup;
    ExportContext& context;
    const IdMarks& componentIds;
    mutable TubeRun tubes = {};   // the last run that was read
    mutable LineFacts line = {};  // those of the last item
};

// Custom names by owner, unique over the whole file; the driver empties the table before the pipes. Module-wide.
std::map<std::string, HxDbObjectId>& customNames();
// Component names come from "eqno" and "eqno1"; set by the driver from the project configuration. Module-wide.
bool& eqnoName();

class _HextComponentDesc : public _HextElementDesc {
public:
    explicit _HextComponentDesc(std::string typeWord) { type = std::move(typeWord); }

    // The macro line; `flag` is not used.
    void write(std::string& out, bool flag) const override;
    // Takes all values of item `index` of the branch. ExportException when a port or a specification row is missing, a
    // custom name is taken, or an axis has no direction.
    virtual void fill(const BranchSource& source, std::size_t index);
    virtual void setUdaValues(const HxDbSmrtlnEntity* object);

    // Orientation from two vectors, for bends that no object stands behind.
    void setAxes(const HxGeVector3D& x, const HxGeVector3D& y);
    HxGePoint3D arriveAt() const { return view.comp->getArrivePoint(entity); }
    HxGePoint3D leaveAt() const { return view.comp->getLeavePoint(entity); }

    bool isCustomName = false;  // the name comes from the plant data
    std::string_view name;      // the name manager's or one of customNames()
    std::string position = "unset";
    std::string orientation = "unset";
    bool axisPure = true;  // both axes of the orientation lie along world axes
    // Views of names and attributes, which outlive the component.
    std::string_view flagText = "FALSE";
    std::string_view spref = "unset";
    std::string_view lstube = "unset";  // the tube behind this component
    std::uint16_t arrive = 0;
    std::uint16_t leave = 0;
    double angle = 90;
    double height = 0;
    std::string_view userItem;
    std::string_view userType;
    std::string_view compName;
    std::string_view tag;
    std::string_view material;
    std::string_view stockNo;
    std::string_view size;     // only bends of the writer's own have one
    DirectionPair directions;  // at the arrive end and at the leave end; zero for a bend of the writer's own
    CompView view;
    const HxDbSmrtlnEntity* entity = nullptr;

protected:
    // The steps that all classes share: position, ports, tube, name, user attributes.
    void fillCommon(const BranchSource& source, std::size_t index);
    // The common steps, the specification row, the orientation and the directions.
    void fillWith(const BranchSource& source, std::size_t index, bool byReference);
    // The directions at both ends, once the orientation is known.
    void takeDirections();
    // The name, position and orientation arguments.
    void appendPlace(std::string& out) const;
    // Arguments from the reference of the row to that of the tube.
    void appendPorts(std::string& out) const;
    void writeWithNumber(std::string& out, const char* function, const char* kind, double number) const;

private:
    void takePorts();
    void takeTube(const BranchSource& source, std::size_t index);
    void takeName(const BranchSource& source);
    void takeCustomName();
};

class _HextAngleCompDesc final : public _HextComponentDesc {
public:
    using _HextComponentDesc::_HextComponentDesc;
    void write(std::string& out, bool flag) const override;
    void fill(const BranchSource& source, std::size_t index) override;
};

class _HextHeightCompDesc final : public _HextComponentDesc {
public:
    using _HextComponentDesc::_HextComponentDesc;
    void write(std::string& out, bool flag) const override;
    void fill(const BranchSource& source, std::size_t index) override;
};

// Valves, filters, traps and instruments: a straight one is turned by its stem.
class _HextValveInstDesc final : public _HextComponentDesc {
public:
    using _HextComponentDesc::_HextComponentDesc;
    void fill(const BranchSource& source, std::size_t index) override;
};

class _HextTeeDesc final : public _HextComponentDesc {
public:
    _HextTeeDesc(std::string typeWord, std::string itemWord)
        : _HextComponentDesc(std::move(typeWord)), item(std::move(itemWord)) {}
    void write(std::string& out, bool flag) const override;
    void fill(const BranchSource& source, std::size_t index) override;

    std::string item;

private:
    void fillFromNeighbours(const BranchSource& source, std::size_t index);
};

std::unique_ptr<_HextComponentDesc> makeComponentDesc(const HxDbSmrtlnEntity* entity, NameManager& names);
// Makes and fills the object of item `index`.
std::unique_ptr<_HextComponentDesc> makeComponent(const BranchSource& source, std::size_t index);

// The specification row of an object, which must have been written. Prints "Error:%lld<对象未创建等级>" and throws
// ExportException "对象未创建等级" otherwise.
const std::string& requireSpco(const HxDbSmrtlnEntity* object, NameManager& names);
