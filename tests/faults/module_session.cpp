#include "module_session.h"

#include "tolmar/rx.h"

#include <iterator>

namespace fs = std::filesystem;

namespace {

// A few objects of every kind; one that tests can run some hundred times.
std::string smallPlant() {
    return plant::generateModelText({40, 7});
}

std::string bytesOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace

ModuleSession::ModuleSession() {
    folder_ = fs::temp_directory_path() / ("tessaro-faults-" + std::to_string(::getpid()));
    fs::remove_all(folder_);
    fs::create_directories(out());
    fs::copy(TESSARO_SOURCE_DIR "/examples/install", root(), fs::copy_options::recursive);
    tolmar::setInstallationRoot(root().string());
    model_ = std::move(plant::loadModelText(smallPlant()).model);
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
    const fs::path config = root() / "temp" / "hext" / "config.json";
    for (const fs::path& folder : {out(), root() / "temp" / "hext"}) {
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
    for (const fs::path& folder : {out(), root() / "temp" / "hext"}) {
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            if (entry.is_regular_file() && entry.path().extension() != ".log" &&
                entry.path().filename() != "config.json") {
                files[fs::relative(entry.path(), folder_).string()] = bytesOf(entry.path());
            }
        }
    }
    return files;
}

ModuleSession::Run ModuleSession::run(const std::string& command, tolmar::ScriptedAnswers answers,
                                      const std::function<void()>& before, const std::function<void()>& after) {
    clean();
    tolmar::runReport().clear();
    answers.target = out();
    answers.inputs = {"P", "S"};
    tolmar::ScriptedUi ui(std::move(answers));
    tolmar::setHostUi(&ui);
    const auto* commands = TlEdCommandStack::cast(tlrxSysRegistry()->at(TLAD_REGISTERED_COMMANDS));
    if (before) {
        before();
    }
    commands->lookup(command)->handler();
    if (after) {
        after();
    }
    tolmar::waitForStartedPrograms();
    tolmar::setHostUi(nullptr);
    return {tolmar::runReport().outcome(), tolmar::runReport().reason(), ui.printed(), written()};
}
