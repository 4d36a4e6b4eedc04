// Small pipelines as model text, and the pipe writer on them: no dialog, no catalogue, and a specification row for
// every component.
#pragma once

#include "frame/progress_slot.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/manager/uda_writer.h"
#include "hextinterface/model_extraction.h"
#include "hextinterface/ornatohextprocess/ornatohextprocess.h"
#include "hextinterface/ornatohextprocess/pipes/pipe_writer.h"
#include "hextinterface/ornatohextprocess/specs/created.h"
#include "hextinterface/ornatohextprocess/specs/generator.h"
#include "platform/hxcom.h"
#include "support/test_support.h"

#include <algorithm>
#include <initializer_list>
#include <optional>

struct PartPoint {
    int no;
    double x, y, z;
    int flow = 0;
};

// One object of a branch. `attrs` is the inside of a JSON object; "lineno" and "specname" are added.
struct Part {
    int id = 0;
    std::string objectClass;
    std::string attrs;
    std::vector<PartPoint> points;
    std::string more;  // further members, each with a comma in front
};

// Parts that run from `a` to `b`, flowing that way.
inline Part inLine(int id, const std::string& objectClass, const std::string& attrs, PartPoint a, PartPoint b) {
    a.no = 1, a.flow = 1;
    b.no = 2, b.flow = 2;
    const PartPoint middle{0, (a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2};
    return {id, objectClass, attrs, {middle, a, b}, ""};
}
inline Part tube(int id, PartPoint a, PartPoint b, const std::string& more = "") {
    return inLine(id, "HxDbPipeSpec", R"("item":"PIPE","smrtln":"Pipe","size1":"100","end1":"BW","end2":"BW")" + more,
                  a, b);
}
inline Part valve(int id, PartPoint a, PartPoint b, const std::string& more = "") {
    return inLine(id, "HxDbTubeModelSpec",
                  R"("item":"VALVE","itype":"GATE","smrtln":"Normal","size1":"100","end1":"FLRF","end2":"FLRF")" + more,
                  a, b);
}
inline Part weld(int id, PartPoint at) {
    return inLine(id, "HxDbTubeWeld", R"("item":"WELD","smrtln":"Weld","size1":"100","size":"100","stype":"BW")", at,
                  at);
}
inline Part elbow(int id, PartPoint in, PartPoint corner, PartPoint out, const std::string& more = "") {
    in.no = 1, in.flow = 1;
    out.no = 3, out.flow = 2;
    corner.no = 0;
    return {id,
            "HxDbTubeModelSpec",
            R"("item":"ELBOW","smrtln":"Arc","size1":"100","end1":"BW","end2":"BW")" + more,
            {corner, in, out},
            ""};
}
inline Part nozzle(int id, PartPoint at) {
    return {id,
            "HxDbNozzleModel",
            R"("item":"NOZZLE","smrtln":"Nozzle","size1":"100","end2":"FLRF")",
            {{1, at.x, at.y, at.z, 2}},
            ""};
}
inline Part stop(int id, PartPoint at) {
    return {id, "HxDbTubeStop", R"("item":"STOP","smrtln":"Normal","size1":"100")", {{1, at.x, at.y, at.z}}, ""};
}
inline PartPoint at(double x, double y = 0, double z = 0) {
    return {0, x, y, z};
}

struct Line {
    int id = 10;
    std::string name = "L-1";
    std::string attrs = R"("insul":"0")";
    std::vector<std::vector<Part>> branches = {};
    std::vector<std::pair<int, int>> links = {};  // further connections: the first part's last point holds the second
};

// Neighbours in a branch hang together: the later one at the last point of the earlier one.
class PlantText {
public:
    explicit PlantText(const std::vector<Line>& lines) {
        text_ = R"({"id":2,"class":"HextSite","in":1,"name":"S"},{"id":3,"class":"HextZone","in":2,"name":"Z"})";
        for (const Line& line : lines) {
            add(line);
        }
    }
    std::string str() const { return TestModel::withObjects(text_); }

private:
    void add(const Line& line) {
        std::string lists;
        for (const auto& branch : line.branches) {
            lists += lists.empty() ? "[" : ",[";
            for (std::size_t i = 0; i < branch.size(); ++i) {
                lists += (i != 0 ? "," : "") + std::to_string(branch[i].id);
            }
            lists += "]";
        }
        const std::string id = std::to_string(line.id);
        text_ += R"(,{"id":)" + id + R"(,"class":"HextPipeline","in":3,"color":5,"name":")" + line.name +
                 R"(","branches":[)" + lists + R"(],"attrs":{"lineno":")" + line.name + "\"," + line.attrs + "}}";
        for (const auto& branch : line.branches) {
            for (std::size_t i = 0; i < branch.size(); ++i) {
                add(branch[i], id, i > 0 ? branch[i - 1].id : 0, i + 1 < branch.size() ? branch[i + 1].id : 0, line);
            }
        }
    }
    void add(const Part& part, const std::string& in, int before, int after, const Line& line) {
        for (const auto& [from, to] : line.links) {
            after = from == part.id ? to : after;
            before = to == part.id ? from : before;
        }
        text_ += R"(,{"id":)" + std::to_string(part.id) + R"(,"class":")" + part.objectClass + R"(","in":)" + in +
                 R"(,"attrs":{"lineno":")" + in + R"(","specname":"A1",)" + part.attrs + R"(},"points":[)";
        const std::size_t first = part.points.front().no == 0 && part.points.size() > 1 ? 1 : 0;
        for (std::size_t i = 0; i < part.points.size(); ++i) {
            const PartPoint& p = part.points[i];
            char line_[160];
            std::snprintf(line_, sizeof line_, R"({"no":%d,"at":[%.17g,%.17g,%.17g],"flow":%d)", p.no, p.x, p.y, p.z,
                          p.flow);
            const bool last = i + 1 == part.points.size();
            const int to = i == first && before != 0 ? before : last && after != 0 ? after : 0;
            text_ += (i != 0 ? "," : "") + std::string(line_) + (to != 0 ? ",\"to\":" + std::to_string(to) : "") + "}";
        }
        text_ += "]" + part.more + "}";
    }

    std::string text_;
};

class PipesTest : public testing::Test {
protected:
    PipesTest() {
        root.write("temp/hext/config.json", config);
        customNames().clear();
        eqnoName() = false;
        createdIspecs().clear();
        createdSpcos().clear();
    }
    ~PipesTest() override { eqnoName() = false; }

    // Loads the lines and gives every component that can have one a specification row, except `withoutRow`.
    void load(const std::vector<Line>& lines, std::initializer_list<int> withoutRow = {}) {
        model.reset();
        model.emplace(PlantText(lines).str());
        tree.clear();
        ids.clear();
        names.emplace();
        names->types.loadSkeyTable();
        names->types.loadTypeTable();
        udas.emplace((root.path() / "uda.txt").string(), *names);
        context.emplace(ExportContext{*names, *udas});
        ProgressScope progress;
        ObjectList pipelines;
        for (const Line& line : lines) {
            pipelines.push_back(openAs<HxDbObject>(HxDbObjectId(line.id)));
        }
        tree = extractBranches(pipelines);
        ASSERT_TRUE(checkSharedComponents(tree, ids));
        for (const PipelineBranches& pipeline : tree) {
            for (const ComponentList& branch : pipeline) {
                for (const HxDbSmrtlnEntity* item : branch) {
                    if (std::find(withoutRow.begin(), withoutRow.end(), item->objectId().toInt()) == withoutRow.end()) {
                        createdSpcos().insert(names->components.getSpcoName(item));
                    }
                }
            }
        }
    }
    // What the writer makes of what is loaded, with plain line ends.
    std::string write(const ObjectSet& skip = {}) {
        tolmar::runReport().clear();
        ui.printed.clear();
        {
            ProgressScope progress;
            PipeWriter writer(*context, (root.path() / "pipe.txt").string(), ids);
            writer.run(tree, skip);
            EXPECT_TRUE(writer.close());
        }
        std::string text = root.read("pipe.txt");
        std::erase(text, '\r');
        return text;
    }
    // The lines of one branch between its banner and the end of the text, for a model of one branch.
    std::string branchText(const std::vector<Part>& parts) {
        load({{.branches = {parts}}});
        const std::string text = write();
        const std::size_t at = text.find(banner);
        return at == std::string::npos ? "" : text.substr(at + banner.size());
    }
    // Positions, orientations and sizes of the lines of components: "TYPE position|orientation|rest from the
    // reference".
    static std::vector<std::string> components(const std::string& text) {
        std::vector<std::string> result;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("!!ORNAPipeCreate") && line.find("CreatePipe(") == std::string::npos &&
                line.find("CreateBranch(") == std::string::npos) {
                result.push_back(line.substr(line.find('(')));
            }
        }
        return result;
    }
    static std::string reasons() {
        std::string text;
        for (const auto& row : tolmar::runReport().passed()) {
            text += std::to_string(row.id) + " " + row.what + ": " + row.why + "\n";
        }
        return text;
    }

    static const std::string banner;
    static const char* const config;

    TestRoot root;
    TestUi ui;
    std::optional<TestModel> model;
    BranchTree tree;
    IdMarks ids;
    std::optional<NameManager> names;
    std::optional<UdaWriter> udas;
    std::optional<ExportContext> context;
};

inline const std::string PipesTest::banner = "-----------------------------BRANCH------------------------------\n";
inline const char* const PipesTest::config = R"({"skey":["PIPE|##|FLRF|##|##|##|FP","PIPE|##|##|##|##|##|TU",
"VALVE|##|##|##|##|##|VV","ELBOW|##|##|##|##|##|EL","COMPTee|##|##|##|##|##|TE","COMPLatera|##|##|##|##|##|TE",
"COMPY|##|##|##|##|##|TE","TESO|##|##|##|##|##|TE","YTEE|##|##|##|##|##|YY","STOP|##|##|##|##|##|ST",
"REDU|##|##|##|##|##|RE"],
"type":{"FP":"FTUB","TU":"TUBE","VV":"VALV","EL":"ELBO","TE":"TEE","YY":"PCOM","ST":"PCOM","RE":"REDU"},
"color":[11,12,13,14,15,16,17,18]})";

inline std::string onlyComponent(const std::vector<std::string>& lines) {
    return lines.size() == 1 ? lines.front() : std::to_string(lines.size()) + " components";
}
