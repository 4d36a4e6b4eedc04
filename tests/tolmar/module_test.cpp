#include "tolmar/module_api.h"
#include "tolmar/module_loader.h"

#include <gtest/gtest.h>

namespace {

using tolmar::LoadedModule;

TlEdCommandStack& stack() {
    return *TlEdCommandStack::cast(tlrxSysRegistry()->at(TLAD_REGISTERED_COMMANDS));
}

std::string moduleFile(const std::string& name) {
    return TESSARO_BIN_DIR "/test-modules/" + name + ".so";
}

std::string loadError(const std::string& name) {
    std::string error;
    EXPECT_EQ(LoadedModule::load(moduleFile(name), error), nullptr) << name;
    EXPECT_EQ(stack().lookup("FAULTY"), nullptr) << name;
    return error.substr(std::min(error.size(), moduleFile(name).size() + 2));
}

TEST(CommandStack, NamesAreUniqueWithoutCaseAndGroupsGoAsAWhole) {
    TlEdCommandStack commands;
    const TlEdCommand* added = nullptr;
    EXPECT_EQ(commands.addCommand(
                  "G", "Run", "Run", 0, [] {}, nullptr, -1, nullptr, &added),
              0);
    EXPECT_NE(commands.addCommand("H", "RUN", "RUN", 0, [] {}), 0);
    EXPECT_NE(commands.addCommand("H", nullptr, "x", 0, [] {}), 0);
    EXPECT_NE(commands.addCommand("H", "x", "x", 0, nullptr), 0);
    EXPECT_EQ(commands.addCommand("H", "Stop", nullptr, 0, [] {}), 0);
    EXPECT_EQ(commands.lookup("rUN"), added);
    EXPECT_EQ(commands.removeGroup("g"), 0);
    EXPECT_NE(commands.removeGroup("g"), 0);
    EXPECT_EQ(commands.lookup("Run"), nullptr);
    EXPECT_EQ(commands.commands().size(), 1U);
}

TEST(HostRegistry, KnowsOneObjectAndKeepsServiceHandles) {
    EXPECT_EQ(tlrxSysRegistry()->at("OTHER"), nullptr);
    EXPECT_EQ(tlrxSysRegistry()->at(nullptr), nullptr);
    EXPECT_EQ(tlrxRegisterService("A"), tlrxRegisterService("A"));
    EXPECT_NE(tlrxRegisterService("A"), tlrxRegisterService("B"));
}

TEST(ModuleLoader, EveryStepThatFailsIsNamed) {
    EXPECT_EQ(loadError("missing"), "no such module file");
    EXPECT_EQ(loadError("no_entry"), "symbol tlrxEntryPoint missing");
    EXPECT_EQ(loadError("no_version"), "symbol tlrxGetApiVersion missing");
    EXPECT_EQ(loadError("wrong_version"), "interface version 0x07E8FFFF, 0x07E90000 expected");
    EXPECT_EQ(loadError("init_fails"), "initialisation failed with result 3");
    EXPECT_EQ(loadError("init_throws"), "initialisation failed: no licence");
    std::string error;
    EXPECT_EQ(LoadedModule::load(TESSARO_SOURCE_DIR "/CMakeLists.txt", error), nullptr);
    EXPECT_NE(error.find("cannot be loaded: "), std::string::npos);
}

TEST(ModuleLoader, CommandsLiveAsLongAsTheModule) {
    std::string error;
    auto module = LoadedModule::load(moduleFile("good"), error);
    ASSERT_NE(module, nullptr) << error;
    EXPECT_NE(stack().lookup("write"), nullptr);
    EXPECT_NE(module->symbol("XDBOUT"), nullptr);
    EXPECT_EQ(module->symbol("nothing"), nullptr);
    module.reset();
    EXPECT_EQ(stack().lookup("write"), nullptr);
}

}  // namespace
