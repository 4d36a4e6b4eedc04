// Names for every element of the macro files. No writer builds a name of its own.
//
// Sameness is decided by the name: objects with equal attributes get equal names, the writers see the name already
// created and write the element once. Every registered name stands in one table with its kind; the same text under
// another kind throws ExportException "%1% 存在命名冲突！".
//
// One instance serves one run. Texts are 8-bit in the code page, lengths are in bytes. A result that is a reference
// stays valid as long as the manager. Object arguments may be null where nothing else is said: all attributes then read
// as empty. Unless an operation says otherwise its result is registered.
#pragma once

#include "hextinterface/manager/name_entry.h"
#include "platform/objects.h"

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>

class TlCmColor;

// The categories of target databases that macro files address.
enum class ExportDb : int { Cata, Spec, Equip, EquipStru, Supp, EquipSupp, Pipe, EquipBase, Common };

struct InsulationRecord {
    std::int32_t minSize = 0;
    std::int32_t maxSize = 0;
    std::int32_t minTemperature = 0;
    std::int32_t maxTemperature = 0;
    std::string material;  // as first seen
};
// By key: insulation code, "_", whole millimetres of thickness.
using InsulationTable = std::map<std::string, InsulationRecord>;

// A flange record as the bolt writers read it.
struct FlangeData {
    std::string spec;  // bolt specification text
    std::string code;  // flange standard
    std::string endtype;
    std::string rating;
    std::string unit;
    std::int32_t size = 0;
};

class NameManager {
public:
    struct State;  // known to the manager's own sources

    NameManager();
    ~NameManager();
    NameManager(const NameManager&) = delete;
    NameManager& operator=(const NameManager&) = delete;

    // ------------------------------------------------------------------------------------------ state of an element
    // RunException for a name that is not known or has been created already.
    void markNameCreated(std::string_view name);
    // Marks a name that is not created yet; false for one that is. RunException for an unknown name.
    bool markIfNotCreated(std::string_view name);
    // False for an unknown name.
    bool isNameCreated(std::string_view name) const;
    bool isNameKnown(std::string_view name) const;
    // ExportException for a known name.
    void addUdaName(std::string_view name);
    // Null for an unknown name.
    const NameEntry* findName(std::string_view name) const;

    // ---------------------------------------------------------------------------------------------- Skey and GType
    // Both read the project configuration; its exceptions pass.
    void loadSkeyTable();
    void loadTypeTable();
    // Prints the types without GType, then those without Skey, on the command line.
    void reportLostMappings() const;
    // Empty when no row matches. ExportException when both "item" and "itype" are empty.
    std::string getSkey(const HxDbObject* object);
    const std::string& getGtype(const HxDbObject* object);

    // ------------------------------------------------------------------------------------------------- components
    const std::string& getCataName(const HxDbObject* object);
    const std::string& getSectionName(const HxDbObject* object);
    // ExportException for a HxDbBalloon that is connected to nothing.
    const std::string& getComponentName(const HxDbObject* object);
    // Short type code, not registered.
    const std::string& getStype(const HxDbObject* object);
    const std::string& getSpecName(const HxDbObject* object);
    const std::string& getSpcoShortName(const HxDbObject* object);
    // Specification, "/", short name.
    const std::string& getSpcoName(const HxDbObject* object);
    const std::string& getScomName(const HxDbObject* object);
    const std::string& getGmsetName(const HxDbObject* object);
    const std::string& getPtsetName(const HxDbObject* object);
    const std::string& getDtsetName(const HxDbObject* object);
    const std::string& getMtsetName(const HxDbObject* object);
    // Queries: empty when the name is not known (the names it is made of are registered all the same). findSpcoName
    // throws on a clash; the others give the empty text.
    const std::string& findSpcoName(const HxDbObject* object);
    const std::string& findScomName(const HxDbObject* object);
    const std::string& findDtsetName(const HxDbObject* object);
    const std::string& findMtsetName(const HxDbObject* object);

    // ---------------------------------------- point sets and attachments: `object` is the component attached to
    const std::string& getPointSetBaseName(const HxDbObject* object);
    const std::string& getPointSetScName(const HxDbObject* object);
    const std::string& getPointSetDtName(const HxDbObject* object);
    const std::string& getAttaSpecName() const;
    const std::string& getAttaShortName(const HxDbObject* object);
    std::string getAttaStype(const HxDbObject* object);  // not registered
    const std::string& getAttaSpcoName(const HxDbObject* object);

    // ------------------------------------------------------------------------- specifications, welds, connections
    // 0 components, 1 nozzles, 2 supports; anything else reads as 0.
    const std::string& getWeldSpecName(int which) const;
    const std::string& getConnTableName() const;
    // The pair in byte order of the end types.
    const std::string& getCocoName(std::string_view end1, std::string_view end2);
    // The text unchanged, not registered.
    std::string keepName(std::string_view text) const { return std::string(text); }

    // ------------------------------------------------------------------------------------------------- insulation
    // Every operation with an object adds it to the table or widens its record. ExportException "不支持的尺寸类型",
    // "保温代号为空", "保温元件保温厚度为0" or "保温信息错误" when the object does not tell its insulation.
    void registerInsulation(const HxDbObject* object);
    const InsulationTable& getInsulTable() const;
    const std::string& getInsulScomName(const HxDbObject* object);
    const std::string& getInsulMtsetName(const HxDbObject* object);
    // "_" for the empty code.
    const std::string& getInsulSpecName(std::string_view code);
    const std::string& getInsulShortName(const HxDbObject* object);
    const std::string& getInsulSpcoName(const HxDbObject* object);

    // ------------------------------------------------------------------------------------------------------ bolts
    // `partType` is the type text of the bolt or nut as its writer holds it, `spec` the name of the bolt
    // specification without "BOLT_".
    const std::string& getBoltObjectName(const HxDbObject* object);
    const std::string& getBltabName() const;
    const std::string& getBlistName() const;
    const std::string& getBoltCataName() const;
    const std::string& getBoltSectName() const;
    const std::string& getBoltSpecName(std::string_view spec);
    const std::string& getBoltKeyName(const FlangeData& flange);
    const std::string& getBoltStype(const FlangeData& flange, std::string_view partType);  // not registered
    const std::string& getBoltShortName(const FlangeData& flange, std::string_view partType);
    const std::string& getBoltSpcoName(std::string_view spec, const FlangeData& flange, std::string_view partType);
    const std::string& getBoltItemName(std::string_view spec, const FlangeData& flange, std::string_view partType);
    const std::string& getBoltDtsetName(const FlangeData& flange);
    const std::string& getBoltMtsetName(const FlangeData& flange);
    const std::string& getNutDtsetName(const FlangeData& flange);
    const std::string& getNutMtsetName(const FlangeData& flange);

    // ------------------------------------------------------------------------------------ pipes, branches, members
    // The line number, made unique; not registered. Empty for null.
    const std::string& getPipeName(const HxDbObject* pipeline);
    // Names the branch of the components, which stand in connection order, or gives the one that an end has already.
    // Empty for an empty list, with a line in the export log.
    const std::string& createBranchName(std::span<HxDbSmrtlnEntity* const> components);
    // Moves the components to a known branch, unless the first lies in it or the last in any. RunException for a
    // branch that is not known.
    void addToBranch(std::string_view branch, std::span<HxDbSmrtlnEntity* const> components);
    // ExportException for an object without branch.
    const std::string& getBranchNameOf(const HxDbObject* object) const;
    // The branch of an earlier stop that meets this one; null when there is none.
    const std::string* matchTubeStop(const HxDbObject* stop) const;
    // ExportException for an object without branch.
    const std::string& getMemberName(const HxDbObject* object);

    // --------------------------------------------------------------- owners and structure; nothing here is registered
    const std::string& getSiteName(const HxDbObject* site);
    const std::string& getZoneName(const HxDbObject* zone);
    std::string getDbZoneName(ExportDb category) const;
    std::string getDbTitle(ExportDb category) const;
    // Empty when the owner is not a HextSupport.
    std::string getSupportName(const HxDbObject* object) const;
    std::string getEqnoName(const HxDbObject* object) const;
    std::string getNozzleName(const HxDbObject* nozzle) const;
    // ExportException for a colour that is no plain index.
    std::string getColourName(const TlCmColor& colour) const;

    // -------------------------------------------------------------------------------------------------- equipment
    // ExportException when the object, or another of the same base name, has this final name already.
    void registerEquipName(HxDbObjectId objectId, std::string_view baseName, std::string_view finalName);
    // The final name, or the empty text.
    const std::string& getBoundEquipNo(HxDbObjectId objectId) const;
    bool hasEquipName(std::string_view baseName) const;

private:
    std::unique_ptr<State> state_;
};

// Replaces in place, byte for byte, white space and ~`*^()+='",./\|? by "_".
void cleanName(std::string& text);
