// Turns connected objects into catalogue entries. Objects that are built alike share their entry: each element of the
// tree is identified by its name alone and written once, and the component's name is the test for the whole entry.
#pragma once

#include "hextinterface/hextbasemethod/object_lists.h"
#include "hextinterface/hextcata/item.h"
#include "hextinterface/hextcata/stream.h"
#include "scripts/project_config.h"

#include <string_view>
#include <vector>

class CataBuilder {
public:
    // Opens <folder>/cata.txt. The name manager must outlive the builder.
    CataBuilder(std::string_view folder, NameManager& names);
    // For tests: writes to a stream that is open already.
    CataBuilder(CataStream stream, NameManager& names);

    // The catalogue of the bends that the pipe writer inserts.
    void writeFixedBend();
    // The entries of one branch. False, with nothing written, when an object has no GType.
    bool writeBranch(const ComponentList& objects, const ObjectSet& skipSet);
    // The insulation entries that the name manager has collected.
    void writeInsulationCatalogue();
    // The entry of a support's attachment point. ExportException "管子没有建立ptse！" when the component that it is
    // attached to has no point set.
    void writeAttachment(const HxDbSupportModel* support);
    // What the specification rows of a support and of its attachment point refer to beside that entry: the support's
    // own component, and the detail text of the point set. Only a run that writes those rows needs it.
    void writeSupport(const HxDbSupportModel* support);
    // The entries of nozzles; those with geometry join nozzlesWithSpec().
    void writeNozzles(const std::vector<HxDbNozzleModel*>& nozzles);
    // Closes the file; false when something could not be written.
    bool close() { return stream_.close(); }

    // Insulated objects, and the bolt sets of the objects that carry bolts, in order of writing.
    const std::vector<HxDbSmrtlnEntity*>& insulatedObjects() const { return insulated_; }
    const std::vector<HxDbBoltNutModel*>& boltedObjects() const { return bolted_; }

private:
    // Why an object gets no entry; null when it gets one.
    const char* reasonAgainst(const HxDbSmrtlnEntity* object);
    // Marks the object's entry and registers its insulation; false when the entry was marked already.
    bool startEntry(const HxDbSmrtlnEntity* object, const std::string& scomName);
    void writeObject(HxDbSmrtlnEntity* object);
    bool writeNozzle(const HxDbNozzleModel* nozzle);
    // Fills the item, whose name is set, and writes it. False, with nothing written, for an object without GType.
    bool writeComponentEntry(CataItem& item, const HxDbSmrtlnEntity* object);
    bool writeEntry(CataItem& item, std::string_view kind);
    void writeTree(CataItem& item);
    void findSkey(CataItem& item, std::string_view kind);
    void writeSets(CataItem& item);
    void writeComponentLine(const CataItem& item, std::string_view kind);
    void writeWeld(CataItem& item);
    // Gives the points as they were written.
    CataPoints writeShape(const CataItem& item, std::string refText);
    void writeBolts(const HxDbSmrtlnEntity* object);
    void requireOpen() const;

    CataStream stream_;
    NameManager& names_;
    ConfigTexts texts_;
    ConfigTexts boltTexts_;
    bool withBoltRows_;
    std::vector<HxDbSmrtlnEntity*> insulated_;
    std::vector<HxDbBoltNutModel*> bolted_;
};
