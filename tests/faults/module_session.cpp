#include "module_session.h"

#include "tessaro/check/package/rules.h"

#include "tolmar/rx.h"

#include <iterator>

namespace fs = std::filesystem;

namespace {

std::string bytesOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// The package but for its ids. A fault stands in it, so that no broken package is like a whole one.
std::string packageText(const fs::path& file) {
    readers::Findings findings;
    check::packageParts(file, findings);
    const readers::package::Package package = readers::package::readPackage(file, findings);
    std::ostringstream text;
    for (const readers::Finding& finding : findings) {
        text << "fault " << readers::sentence(finding) << "\n";
    }
    for (const readers::package::Model& model : package.models) {
        for (const readers::package::Tree& tree : model.trees) {
            for (const readers::package::TreeNode& node : tree.nodes) {
                text << node.parent << " " << node.type << " " << node.name << "\n";
            }
        }
        for (const readers::package::Property& property : model.properties) {
            text << property.category << " " << property.name << " " << property.value << "\n";
        }
        for (const readers::glb::Scene& scene : model.scenes) {
            text << scene.nodes.size() << " " << scene.meshes.size() << "\n" << scene.binary << "\n";
        }
    }
    return text.str();
}

template <typename List>
void append(std::string& text, const std::vector<List>& lists) {
    for (const auto& list : lists) {
        for (const auto& value : list) {
            text += std::to_string(value) + " ";
        }
        text += "\n";
    }
}

std::string coloursText() {
    std::string text;
    for (const tolmar::ColouredObject& object : tolmar::runReport().colours()) {
        text += std::to_string(object.id) + " " + std::to_string(object.color) + "\n";
    }
    return text;
}

}  // namespace

ModuleSession::ModuleSession(const std::string& modelText) {
    folder_ = fs::temp_directory_path() / ("tessaro-faults-" + std::to_string(::getpid()));
    fs::remove_all(folder_);
    fs::create_directories(out());
    fs::copy(TESSARO_SOURCE_DIR "/examples/install", root(), fs::copy_options::recursive);
    tolmar::setInstallationRoot(root().string());
    tolmar::setScriptsTrusted(true);  // a script of the tests counts its calls in a file
    plant::LoadResult loaded = plant::loadModelText(modelText);
    if (!loaded) {
        throw std::runtime_error(loaded.error);
    }
    model_ = std::move(loaded.model);
    plant::setCurrentModel(model_.get());
    std::string error;
    module_ = tolmar::LoadedModule::load(TESSARO_BIN_DIR "/libtessaro.so", error);
    if (module_ == nullptr) {
        throw std::runtime_error(error);
    }
}

ModuleSession::~ModuleSession() {
    module_.reset();
    plant::setCurrentModel(nullptr);
    model_.reset();
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

void ModuleSession::clean() const {
    const fs::path config = working() / "config.json";
    for (const fs::path& folder : {out(), working()}) {
        std::vector<fs::path> all;
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path() != config) {
                all.push_back(entry.path());
            }
        }
        for (const fs::path& path : all) {
            fs::remove_all(path);
        }
    }
}

// Logs tell the time; they differ from run to run.
Files ModuleSession::written() const {
    Files files;
    for (const fs::path& folder : {out(), working()}) {
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            if (entry.is_regular_file() && entry.path().extension() != ".log" &&
                entry.path().filename() != "config.json") {
                files[fs::relative(entry.path(), folder_).string()] = bytesOf(entry.path());
            }
        }
    }
    return files;
}

void ModuleSession::callXdb(Files& handedOut) const {
    using Doubles = std::vector<std::vector<double>>;
    using Ints = std::vector<std::vector<int>>;
    using Texts = std::vector<std::string>;
    using Function = bool (*)(Texts&, std::vector<std::uint64_t>&, Doubles&, Ints&, Doubles&, Ints&, Texts&, int);
    Texts types, data;
    std::vector<std::uint64_t> colors;
    Doubles positions, normals;
    Ints indices, normalIndices;
    const bool isWhole = reinterpret_cast<Function>(module_->symbol("XDBOUT"))(types, colors, positions, indices,
                                                                               normals, normalIndices, data, 0);
    EXPECT_TRUE(isWhole || tolmar::runReport().outcome() != tolmar::RunOutcome::Done) << "false without a reason";
    for (const std::size_t size : {positions.size(), indices.size(), normals.size(), normalIndices.size()}) {
        EXPECT_EQ(size, colors.size());
    }
    if (isWhole) {
        std::string& text = handedOut["arrays"];
        append(text, positions);
        append(text, indices);
        append(text, normals);
        append(text, data);
    }
}

void ModuleSession::call(const std::string& command, Files& handedOut) const {
    if (command == "XDBOUT") {
        return callXdb(handedOut);
    }
    const auto* commands = TlEdCommandStack::cast(tlrxSysRegistry()->at(TLAD_REGISTERED_COMMANDS));
    commands->lookup(command)->handler();
    if (!tolmar::runReport().colours().empty()) {
        handedOut["colours"] = coloursText();
    }
}

ModuleSession::Run ModuleSession::run(const std::string& command, tolmar::ScriptedAnswers answers,
                                      const std::function<void()>& before, const std::function<void()>& after) {
    clean();
    tolmar::runReport().clear();
    if (!answers.target) {
        answers.target = out();
    }
    answers.inputs = {"P", "S"};
    tolmar::ScriptedUi ui(std::move(answers));
    tolmar::setHostUi(&ui);
    Files handedOut;
    if (before) {
        before();
    }
    call(command, handedOut);
    if (after) {
        after();
    }
    tolmar::waitForStartedPrograms();
    tolmar::setHostUi(nullptr);
    Run run{tolmar::runReport().outcome(), tolmar::runReport().reason(), ui.printed(), written(), {}};
    run.files.merge(handedOut);
    run.contents = run.files;
    for (auto& [name, content] : run.contents) {
        if (name.ends_with(".pmodel")) {
            content = packageText(folder_ / name);
        }
    }
    return run;
}
