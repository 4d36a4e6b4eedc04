// The specification table of pipe components, and the user attributes of its rows.
#pragma once

#include "hextinterface/hextbasemethod/object_lists.h"
#include "hextinterface/manager/context.h"
#include "hextinterface/ornatohextprocess/specs/file.h"

#include <span>
#include <string>
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
    // Ends both files.
    void close() {
        udaOut_.close();
        specOut_.close();
    }

private:
    struct Member {
        const std::string* spec;
        const std::string* gtype;
        const HxDbSmrtlnEntity* object;
        bool operator<(const Member& other) const;
    };
    struct Row {
        const std::string* name;
        std::size_t number;
        const HxDbSmrtlnEntity* object;
    };

    void writeHead(const HxDbSmrtlnEntity* object);
    void writeHeading();
    void writeTypeRows(std::span<const Member> members);
    void takeDistinctRows(std::span<const Member> members);
    void tryRow(const HxDbSmrtlnEntity* object, const std::vector<int>& order);
    void writeRow(const HxDbSmrtlnEntity* object, const std::vector<int>& order);
    std::string boreColumns(const HxDbSmrtlnEntity* object, const std::vector<int>& order);
    std::string balloonColumns(const HxDbSmrtlnEntity* balloon);
    void writeUdas();

    SpecFile specOut_;
    SpecFile udaOut_;
    ExportContext& context_;
    NameManager& names_;
    std::vector<Member> members_;  // of the branch in hand
    std::vector<Row> rows_;        // of its specification and GType in hand
    std::string udaLines_;
};
