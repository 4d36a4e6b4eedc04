// The specification table of pipe components, and the user attributes of its rows.
#pragma once

#include "hextinterface/manager/context.h"
#include "hextinterface/model_extraction.h"
#include "hextinterface/ornatohextprocess/spec_file.h"

#include <vector>

// Nominal size at an end (from 1) by the object's specification; 0 when it does not tell. A weld is stood in for by the
// object at that end.
int sizeAt(const HxDbSmrtlnEntity* object, int end);
// Number of bore columns that a component fills, and the ends (from 0) that fill them in turn.
int columnCount(const HxDbSmrtlnEntity* object);
std::vector<int> columnOrder(const HxDbSmrtlnEntity* object);

class PipeSpecWriter {
public:
    // Opens both files and empties createdSpcos().
    PipeSpecWriter(const std::string& specPath, const std::string& udaPath, ExportContext& context);

    void writeFixedBendSpec();
    // All specifications of one branch. ExportException "等级名称为空" ends the rest of the branch.
    void writeBranchSpecs(const ComponentList& objects, const ObjectSet& skipSet);

private:
    using Objects = std::vector<const HxDbSmrtlnEntity*>;

    void writeHead(const HxDbSmrtlnEntity* object);
    void writeHeading();
    void writeTypeRows(const Objects& objects);
    Objects distinctRows(const Objects& objects);
    void tryRow(const HxDbSmrtlnEntity* object, const std::vector<int>& order);
    void writeRow(const HxDbSmrtlnEntity* object, const std::vector<int>& order);
    std::string boreColumns(const HxDbSmrtlnEntity* object, const std::vector<int>& order);
    std::string balloonColumns(const HxDbSmrtlnEntity* balloon);
    void writeUdas(const Objects& objects);

    SpecFile specOut_;
    SpecFile udaOut_;
    ExportContext& context_;
    NameManager& names_;
};
