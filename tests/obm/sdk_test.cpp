// The stand-in SDK by itself: what it refuses, what it splits, what it says of files that fail.
#include "fixture.h"

#include "obmsdk/obmsdk.h"
#include "support/full_disk.h"

#include <limits>

namespace {

namespace fs = std::filesystem;

class ObmSdk : public testing::Test {
protected:
    ObmSdk() {
        package->open(tolmar::utf8ToWide(target().string()), OBMXCREATE);
        fs::create_directory(folder());
        model->open(tolmar::utf8ToWide(folder().string()), OBMXCREATE);
    }
    ~ObmSdk() override {
        if (model != nullptr) {
            model->destroy();
        }
        package->destroy();
    }
    fs::path target() const { return root.path() / "x.pmodel"; }
    fs::path folder() const { return fs::path(tolmar::wideToUtf8(package->getIntermediateFolder())) / "output" / "M"; }

    using Vertices = std::vector<OBMFloat3>;
    using Facets = std::vector<OBMInt3>;
    int addMesh(const char* id, const Vertices& vertices, const Facets& facets, const Vertices& normals = {}) {
        OBMTriangleMesh* mesh = OBMTriangleMesh::create();
        mesh->setGeometryId(id);
        for (const OBMFloat3& v : vertices) {
            mesh->addVertice(v);
        }
        for (const OBMInt3& f : facets) {
            mesh->addFacet(f);
        }
        for (const OBMFloat3& n : normals) {
            mesh->addNormal(n);
        }
        const int status = model->addMesh(mesh, true, false, 1e-6F);
        mesh->destroy();
        return status;
    }
    int addTriangle(const char* id) { return addMesh(id, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}}); }
    void addMaterial(const char* id) {
        OBMMaterial* material = OBMMaterial::create();
        material->setId(id);
        material->setName(id);
        model->addMaterial(material);
    }
    // A tree of one record "a" with an instance of each geometry in material m1.
    void addTrees(const std::vector<const char*>& geometries, obm::WideView name = u"A") {
        OBMModelTreeNode* tree = OBMModelTreeNode::createNode(OBMModelTreeNode::Root);
        tree->setDatabaseId("r");
        OBMModelTreeNode* child = tree->createChildNode(OBMModelTreeNode::Child);
        child->setDatabaseId("a");
        child->setNodeName(name);
        model->addModelTree(u"t", tree);
        OBMInstanceTreeNode* top = OBMInstanceTreeNode::createNode(nullptr);
        OBMInstanceTreeNode* group = top->createChildNode(nullptr);
        group->setDatabaseId("a");
        group->setType(OBMInstanceTreeNode::Group);
        for (const char* geometry : geometries) {
            OBMAffineTransform* transform = OBMAffineTransform::create();
            transform->matrix[12] = movedBy;
            OBMInstanceTreeNode* instance = group->createChildNode(transform);
            instance->setDatabaseId("a");
            instance->setType(OBMInstanceTreeNode::Geometry);
            instance->setGeometryId(geometry);
            instance->setMaterialId("m1");
        }
        model->setInstanceTree(top);
    }
    int write() {
        const int status = model->write();
        return status != OBMOk ? status : model->close();
    }
    ReadPackage saved() {
        EXPECT_EQ(package->addV3d(std::exchange(model, nullptr)), OBMOk);
        EXPECT_EQ(package->save(), OBMOk);
        ReadPackage read(target());
        EXPECT_EQ(joined(read.findings), "");
        keepForTheJudge(target(), read.package.entries);
        return read;
    }
    // A whole package.
    ReadPackage written() {
        model->setPlanViewName(u"1");
        model->setSpatialViewName(u"2");
        EXPECT_EQ(write(), OBMOk);
        return saved();
    }

    TestRoot root;
    OBMPackage* package = OBMPackage::create(true);
    OBM3dPackage* model = OBM3dPackage::create(true);
    double movedBy = 0;
};

TEST_F(ObmSdk, RefusesMeshesThatNoReceiverTakes) {
    const float infinite = std::numeric_limits<float>::infinity();
    EXPECT_EQ(addMesh("1", {{0, 0, 0}, {1, 0, 0}, {0, infinite, 0}}, {{0, 1, 2}}), OBMBadMesh);
    EXPECT_EQ(addMesh("1", {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 3}}), OBMBadMesh);
    EXPECT_EQ(addMesh("1", {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, -1, 2}}), OBMBadMesh);
    EXPECT_EQ(addTriangle(""), OBMNoId);
    EXPECT_EQ(addTriangle("1"), OBMOk);
    EXPECT_EQ(addTriangle("1"), OBMNoId);
    addMaterial("m1");
    addTrees({"1"});
    EXPECT_EQ(written().scene().meshes.size(), 1U) << "a refused mesh leaves the package as it was";
}

TEST_F(ObmSdk, AnInstanceOfNothingFailsTheWrite) {
    addMaterial("m1");
    addTrees({"9"});
    EXPECT_EQ(write(), OBMUnknownGeometry);
}

TEST_F(ObmSdk, AnInstanceInNoMaterialFailsTheWrite) {
    addTriangle("9");
    addTrees({"9"});
    EXPECT_EQ(write(), OBMUnknownMaterial);
}

TEST_F(ObmSdk, CallsOutOfOrderAreRefused) {
    OBM3dPackage* closed = OBM3dPackage::create(true);
    EXPECT_EQ(closed->write(), OBMNotOpen);
    EXPECT_EQ(closed->close(), OBMNotOpen);
    EXPECT_EQ(closed->open(u"/nowhere/at/all", OBMXCREATE), OBMNoFolder);
    EXPECT_EQ(closed->open(u"/", OBMXREAD), OBMBadMode);
    EXPECT_EQ(package->addV3d(closed), OBMNotOpen) << "nothing was written into it";
    OBMPackage* other = OBMPackage::create(true);
    EXPECT_EQ(other->save(), OBMNotOpen);
    EXPECT_EQ(other->open(tolmar::utf8ToWide(root.path().string()), OBMXCREATE), OBMNoFolder) << "a folder";
    EXPECT_EQ(other->open(u"x", OBMXREAD), OBMBadMode);
    other->destroy();
}

TEST_F(ObmSdk, NormalsThatAreNoUnitVectorsBecomeSome) {
    addMesh("1", {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}}, {{0, 0, 0}, {0, 3, 4}, {NAN, 0, 0}});
    addMesh("2", {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}}, {{0, 0, 1}});
    addMesh("3", {{0, 0, 0}}, {});
    addMaterial("m1");
    addTrees({"1", "2", "3"});
    const ReadPackage read = written();
    const readers::glb::Scene& scene = read.scene();
    EXPECT_EQ(scene.vectors(scene.meshes.at(0).normals),
              (std::vector<std::array<float, 3>>{{0, 0, 1}, {0, 0.6F, 0.8F}, {0, 0, 1}}));
    EXPECT_EQ(scene.meshes.at(1).normals, readers::glb::none) << "not one for each vertex";
    EXPECT_EQ(scene.meshes.size(), 2U) << "a mesh without facets has a node alone";
    EXPECT_EQ(scene.nodes.size(), 5U);
}

TEST_F(ObmSdk, ManyVerticesTakeLongNumbers) {
    for (const int count : {65535, 65536}) {
        const Vertices vertices(static_cast<std::size_t>(count), OBMFloat3(1, 2, 3));
        addMesh(std::to_string(count).c_str(), vertices, {{0, 1, count - 1}});
    }
    addMaterial("m1");
    addTrees({"65535", "65536"});
    const ReadPackage read = written();
    const readers::glb::Scene& scene = read.scene();
    EXPECT_EQ(scene.indices(scene.meshes[0].indices), (std::vector<std::uint32_t>{0, 1, 65534}));
    EXPECT_EQ(scene.indices(scene.meshes[1].indices), (std::vector<std::uint32_t>{0, 1, 65535}));
    EXPECT_NE(scene.accessors[scene.meshes[0].indices].componentType,
              scene.accessors[scene.meshes[1].indices].componentType);
}

TEST_F(ObmSdk, MeshesBeyondTheLimitBeginAFurtherScene) {
    model->setSceneLimit(100);
    for (const char* id : {"1", "2", "3"}) {
        EXPECT_EQ(addTriangle(id), OBMOk);
    }
    EXPECT_EQ(addMesh("big", Vertices(20, OBMFloat3(0, 0, 0)), {}), OBMTooLarge);
    addMaterial("m1");
    addTrees({"1", "3", "2"});
    const ReadPackage read = written();
    ASSERT_EQ(read.model().scenes.size(), 2U);
    const auto geometries = [](const readers::glb::Scene& scene) {
        std::string text;
        for (const readers::glb::Node& node : scene.nodes) {
            text += node.name + "/" + node.geometry + " ";
        }
        return text;
    };
    EXPECT_EQ(geometries(read.model().scenes[0]), "/ a/ a/1 a/2 ");
    EXPECT_EQ(geometries(read.model().scenes[1]), "/ a/ a/3 ");
}

TEST_F(ObmSdk, TransformsAndNamesArriveAsTheyAre) {
    movedBy = 0.1;
    addTriangle("1");
    addMaterial("m1");
    addTrees({"1"}, u"\u4E2D\U0001F600\"\\\n\xD800");
    const ReadPackage read = written();
    EXPECT_EQ(read.scene().nodes.back().matrix,
              (std::vector<double>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0.1, 0, 0, 1}));
    EXPECT_EQ(read.nodes().at(1).name.substr(0, 10), "\xE4\xB8\xAD\xF0\x9F\x98\x80\"\\\n");
}

TEST_F(ObmSdk, AFullDiskFailsTheWriteAndLeavesTheOldFile) {
    std::ofstream(target()) << "old";
    addMesh("1", Vertices(30000, OBMFloat3(1, 2, 3)), {{0, 1, 2}});
    addMaterial("m1");
    addTrees({"1"});
    {
        const FullDisk full(100000);
        EXPECT_EQ(write(), OBMNotWritten);
        EXPECT_EQ(model->write(), OBMNotWritten) << "a failure stays";
    }
    model->destroy();
    model = OBM3dPackage::create(true);
    model->open(tolmar::utf8ToWide(folder().string()), OBMXCREATE);
    addMesh("1", Vertices(30000, OBMFloat3(1, 2, 3)), {{0, 1, 2}});
    addMaterial("m1");
    addTrees({"1"});
    EXPECT_EQ(write(), OBMOk);
    EXPECT_EQ(package->addV3d(std::exchange(model, nullptr)), OBMOk);
    {
        const FullDisk full(100000);
        EXPECT_EQ(package->save(), OBMNotWritten);
    }
    EXPECT_EQ(root.read("x.pmodel"), "old");
    EXPECT_EQ(package->save(), OBMOk);
    EXPECT_GT(fs::file_size(target()), 360000U);
}

TEST_F(ObmSdk, TheWorkingFolderGoesWithThePackage) {
    const fs::path working = folder().parent_path().parent_path();
    EXPECT_TRUE(fs::exists(working / "output"));
    EXPECT_EQ(package->close(), OBMOk);
    EXPECT_FALSE(fs::exists(working));
    EXPECT_EQ(package->close(), OBMNotOpen);
}

}  // namespace
