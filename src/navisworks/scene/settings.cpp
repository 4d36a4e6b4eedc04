#include "navisworks/scene/settings.h"

#include "navisworks/library/handles.h"
#include "tolmar/code_page.h"

#include <string_view>

namespace nv {

namespace {

constexpr int millimetres = 2;
constexpr const char* modelTitle = "Orna Model";

constexpr double part(int value) {
    return value / 255.0;
}
constexpr double background[4][3] = {
    {part(102), part(176), part(233)},
    {part(202), part(229), part(250)},
    {part(105), part(106), part(107)},
    {part(200), part(200), part(200)},
};

void setView(LiNwcScene scene, LiNwcView view) {
    LiNwcViewSetWorldUpVector(view, 0, 0, 1);
    LiNwcViewSetPosition(view, 0, -20, 10);
    LiNwcViewPointAt(view, 0, 0, 10);
    LiNwcSceneSetCurrentView(scene, view);
    LiNwcSceneSetHomeView(scene, view);
}

void setLight(LiNwcScene scene) {
    LiNwcSceneSetHorizonBackground(scene, background[0], background[1], background[2], background[3]);
    LiNwcSceneSetGlobalAmbient(scene, 0.9, 0.9, 0.7);
}

}  // namespace

SceneForm sceneFormOf(const std::string& path) {
    const std::string_view ending = std::string_view(path).substr(path.size() - std::min<std::size_t>(path.size(), 4));
    if (ending == ".nwc") {
        return SceneForm::Cache;
    }
    return ending == ".nwd" ? SceneForm::Document : SceneForm::None;
}

void setUnits(LiNwcScene scene) {
    LiNwcSceneSetLinearUnits(scene, millimetres);
}

void writeScene(LiNwcScene scene, SceneForm form, const std::string& path) {
    const OwnedView view(LiNwcViewCreate());
    setView(scene, view.get());
    setLight(scene);
    const std::u16string widePath = tolmar::toWide(path);
    if (form == SceneForm::Cache) {
        LiNwcSceneWriteCacheEx(scene, tolmar::toWide(modelTitle).c_str(), widePath.c_str(), nullptr, nullptr);
    } else {
        LiNwcSceneWriteEx(scene, widePath.c_str(), nullptr, nullptr);
    }
}

}  // namespace nv
