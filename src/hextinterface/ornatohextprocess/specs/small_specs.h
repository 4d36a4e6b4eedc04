// The specification tables beside that of pipe components: nozzles, insulation, supports, attachments, bolts.
#pragma once

#include "hextinterface/hextcata/bolt_catalogue.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/ornatohextprocess/specs/file.h"
#include "platform/objects.h"

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

class NozzleSpecWriter {
public:
    NozzleSpecWriter(const std::string& path, NameManager& names) : out_(path), names_(names) {}
    // ExportException "参数中含有非管嘴元件！" when an object is no nozzle, before anything is written.
    void write(const std::vector<HxDbNozzleModel*>& nozzles);

private:
    using Groups = std::map<std::string, std::vector<const HxDbNozzleModel*>>;
    Groups groupBySpec(const std::vector<HxDbNozzleModel*>& nozzles);
    void writeHead(const HxDbNozzleModel* nozzle);
    void writeRow(const HxDbNozzleModel* nozzle);

    SpecFile out_;
    NameManager& names_;
};

class InsulSpecWriter {
public:
    InsulSpecWriter(const std::string& path, NameManager& names) : out_(path), names_(names) {}
    void write();

private:
    bool writeHead(const std::string& code);
    void writeRow(const std::string& key, const InsulationRecord& record);

    SpecFile out_;
    NameManager& names_;
};

// Opens <folder>Spec<file> after naming it in <folder>SpecExecute.mac.tpl.
SpecFile openSpecMacro(const std::string& folder, const char* fileName, const NameManager& names);

class SupportSpecWriter {
public:
    SupportSpecWriter(const std::string& folder, NameManager& names);
    void write(const std::vector<HxDbSupportModel*>& supports);

private:
    void writeRow(const HxDbSupportModel* support);

    SpecFile out_;
    NameManager& names_;
};

class AttachSpecWriter {
public:
    AttachSpecWriter(const std::string& folder, NameManager& names);
    // `connected`: what the supports are attached to; the first object of a name stands for all.
    void write(const std::vector<const HxDbSmrtlnEntity*>& connected);

private:
    void writeRow(const HxDbSmrtlnEntity* object);

    SpecFile out_;
    NameManager& names_;
};

class BoltSpecWriter {
public:
    BoltSpecWriter(const std::string& specPath, const std::string& udaPath, NameManager& names)
        : specOut_(specPath), udaOut_(udaPath), names_(names) {}
    void write(const std::vector<HxDbBoltNutModel*>& boltSets);

private:
    using Entry = std::pair<FlangeData, BoltData>;
    void collect(const HxDbBoltNutModel* boltSet);
    void add(const FlangeData& flange, const BoltData& part);
    void writeRow(const FlangeData& flange, const BoltData& part);

    SpecFile specOut_;
    SpecFile udaOut_;
    NameManager& names_;
    std::map<std::string, std::vector<Entry>> groups_;
    std::set<std::string> met_;
};
