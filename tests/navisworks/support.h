// What the tests of the scene export share: a user, a model, and the scene read back as text.
#pragma once

#include "navisworks/command.h"
#include "nwcreate/inspect.h"
#include "scene_reading.h"
#include "support/export_test.h"

#include <map>

// Answers both dialogs, remembers what was asked.
class NvUi final : public TestUi {
public:
    std::optional<std::string> fileDialog(const tolmar::FileDialog& dialog) override {
        asked = dialog;
        return fileAnswer;
    }
    std::optional<std::string> folderDialog(const std::string& title) override {
        folderTitle = title;
        return folderAnswer;
    }
    void messageBox(const std::string& text, const std::string& title) override {
        boxes.push_back(title + ": " + text);
    }
    void progressChanged(const tolmar::ProgressState& state) override {
        TestUi::progressChanged(state);
        if (state.open) {
            progressTitle = state.title;
        }
        if (onProgress) {
            onProgress(state);
        }
    }

    std::optional<std::string> fileAnswer;
    std::optional<std::string> folderAnswer;
    tolmar::FileDialog asked;
    std::string folderTitle;
    std::string progressTitle;
    std::function<void(const tolmar::ProgressState&)> onProgress;
};

// A box of 12 triangles; `more` are further members, such as R"("color":3)".
inline std::string box(const std::string& more = "") {
    return R"({"type":"HextBox3D","point":[0,0,0],"xLength":10,"yLength":20,"zLength":30,"xAxis":[1,0,0],)"
           R"("yAxis":[0,1,0])" +
           (more.empty() ? "" : "," + more) + "}";
}

// A stored object with further members and its primitives.
inline std::string item(int id, const std::string& type, int parent, const std::string& more = "",
                        const std::string& primitives = box()) {
    return R"({"id":)" + std::to_string(id) + R"(,"class":")" + type + R"(","in":)" + std::to_string(parent) +
           (more.empty() ? "" : "," + more) + R"(,"primitives":[)" + primitives + "]}";
}

// A node of the tree.
inline std::string node(int id, const std::string& type, int parent, const std::string& name = "") {
    return R"({"id":)" + std::to_string(id) + R"(,"class":")" + type + R"(","in":)" + std::to_string(parent) +
           (name.empty() ? "" : R"(,"name":")" + name + "\"") + "}";
}

// A site, a zone and an equipment, which is object 4.
inline std::string equipment(const std::string& objects) {
    return node(2, "HextSite", 1, "S") + "," + node(3, "HextZone", 2, "Z") + "," + node(4, "HextEquipe", 3, "E") +
           (objects.empty() ? "" : ",") + objects;
}

class NvTest : public ExportTest<NvUi> {
protected:
    NvTest() { answer("P.nwc"); }
    ~NvTest() override {
        // Whatever happened, every reference was given back, once.
        const LiNwcBalance balance = LiNwcInspectBalance();
        EXPECT_EQ(balance.left, 0U);
        EXPECT_EQ(balance.given, balance.returned);
        EXPECT_EQ(balance.misused, misused);
    }

    void answer(const std::string& file) { ui.fileAnswer = (out() / file).string(); }
    void options(const std::vector<std::string>& keys) {
        std::string text = "[Control]\n";
        for (const std::string& key : keys) {
            text += key + "=1\n";
        }
        root.write("plugins/nvoutplugins.ini", text);
    }
    SceneReading read(const std::string& file = "out/P.nwc") const { return SceneReading(root.path() / file); }
    // Runs the command and gives the scene's tree, without the line ends of the side file in the code page.
    std::string run() {
        nvout();
        return read().tree();
    }
    std::string json(const std::string& file = "out/P.json") const {
        std::string text = root.read(file);
        std::erase(text, '\r');
        return text;
    }
    static std::string passedOver() {
        std::string text;
        for (const auto& entry : tolmar::runReport().passed()) {
            text += std::to_string(entry.id) + " " + entry.what + "\n";
        }
        return text;
    }

    std::uint64_t misused = 0;
};

inline const char* const namesById = "function getNodeName(t) return 'N' .. t.objid end\n";
