// What holds for all names of a whole plant.
#include "generator/generate.h"
#include "hextinterface/hextbasemethod/macro_text.h"
#include "manager/fixture.h"
#include "platform/model_tests.h"

#include <map>
#include <set>

namespace {

using Signature = std::vector<std::string>;

bool hasType(const HxDbObject* object) {
    return HxDbTubeWeld::cast(object) != nullptr || !getBomValue(object, "item").empty();
}

class GeneratedPlant : public NameTest, public testing::WithParamInterface<int> {
protected:
    GeneratedPlant() {
        model = std::make_unique<TestModel>(
            plant::generateModelText({.objects = 3000, .seed = static_cast<std::uint64_t>(GetParam())}));
        names.types.loadSkeyTable();
        names.types.loadTypeTable();
        getAllSubObjects(hxcom::getDataManTreeRoot(), everything);
        for (HxDbObject* object : everything) {
            if (HxDbTubeModel::cast(object) != nullptr && hasType(object)) {
                components.push_back(HxDbSmrtlnEntity::cast(object));
            }
        }
    }

    std::vector<HxDbObject*> everything;
    std::vector<HxDbSmrtlnEntity*> components;
};

void take(Signature& signature, const HxDbObject* object, std::initializer_list<const char*> keys) {
    for (const char* key : keys) {
        signature.emplace_back(getBomValue(object, key));
    }
}

// Everything that a component's own name may tell of it.
Signature signatureOf(const HxDbObject* object) {
    if (HxDbTubeWeld::cast(object) != nullptr) {
        Signature weld = {"weld"};
        take(weld, object, {"size", "stype"});
        return weld;
    }
    if (HxDbNozzleModel::cast(object) != nullptr) {
        Signature nozzle = {"nozzle"};
        take(nozzle, object,
             {"skey", "eqno", "nozno", "specname", "item", "itype", "end", "rating", "size1", "size2", "size3",
              "size4"});
        return nozzle;
    }
    Signature signature = {smrtln::isHose(object) ? "hose" : "component"};
    take(signature, object, {"specname", "item", "itype", "rating", "sch", "thick", "end1", "size1"});
    const bool isBend = isBendLikeItem(object);
    if (isBend) {
        take(signature, object, {"radius", "angle"});
    }
    if (isBend || !smrtln::isHose(object)) {
        take(signature, object, {"end2", "size2"});
        if (!isBend || getBomValue(object, "radius").empty()) {
            take(signature, object, {"end3", "end4", "size3", "size4"});
        }
    }
    return signature;
}

TEST_P(GeneratedPlant, EqualAttributesGiveEqualNamesAndDifferentOnesDifferentNames) {
    std::map<Signature, std::string> nameOf;
    std::map<std::string, Signature> signatureOfName;
    for (const HxDbSmrtlnEntity* object : components) {
        if (HxDbBalloon::cast(object) != nullptr) {
            continue;
        }
        const Signature signature = signatureOf(object);
        const std::string name = names.components.getComponentName(object);
        EXPECT_EQ(nameOf.try_emplace(signature, name).first->second, name);
        EXPECT_EQ(signatureOfName.try_emplace(name, signature).first->second, signature) << name;
    }
    EXPECT_GT(nameOf.size(), 5U);
    EXPECT_LT(nameOf.size(), components.size());
}

TEST_P(GeneratedPlant, ANameHasOneKindAndFitsTheTarget) {
    using Getter = const std::string& (*)(NameManager&, const HxDbObject*);
    const std::pair<Getter, NameKind> forms[] = {
        {[](NameManager& of, const HxDbObject* o) -> const std::string& { return of.components.getCataName(o); },
         NameKind::Cata},
        {[](NameManager& of, const HxDbObject* o) -> const std::string& { return of.components.getSectionName(o); },
         NameKind::Section},
        {[](NameManager& of, const HxDbObject* o) -> const std::string& { return of.components.getComponentName(o); },
         NameKind::Component},
        {[](NameManager& of, const HxDbObject* o) -> const std::string& { return of.components.getSpcoShortName(o); },
         NameKind::Short},
        {[](NameManager& of, const HxDbObject* o) -> const std::string& { return of.components.getSpcoName(o); },
         NameKind::Spco},
        {[](NameManager& of, const HxDbObject* o) -> const std::string& { return of.components.getScomName(o); },
         NameKind::Scom},
        {[](NameManager& of, const HxDbObject* o) -> const std::string& { return of.components.getGmsetName(o); },
         NameKind::Gmset},
        {[](NameManager& of, const HxDbObject* o) -> const std::string& { return of.components.getPtsetName(o); },
         NameKind::Ptset},
        {[](NameManager& of, const HxDbObject* o) -> const std::string& { return of.components.getDtsetName(o); },
         NameKind::Dtset},
        {[](NameManager& of, const HxDbObject* o) -> const std::string& { return of.components.getMtsetName(o); },
         NameKind::Mtset},
        {[](NameManager& of, const HxDbObject* o) -> const std::string& { return of.attachments.getPointSetScName(o); },
         NameKind::Scom},
        {[](NameManager& of, const HxDbObject* o) -> const std::string& { return of.attachments.getPointSetDtName(o); },
         NameKind::Dtset},
        {[](NameManager& of, const HxDbObject* o) -> const std::string& { return of.attachments.getAttaShortName(o); },
         NameKind::Short},
        {[](NameManager& of, const HxDbObject* o) -> const std::string& { return of.attachments.getAttaSpcoName(o); },
         NameKind::Spco},
    };
    std::size_t seen = 0;
    for (const HxDbSmrtlnEntity* object : components) {
        for (const auto& [get, kind] : forms) {
            try {
                const std::string& name = get(names, object);
                ASSERT_NE(names.find(name), nullptr) << name;
                EXPECT_EQ(names.find(name)->kind, kind) << name;
                EXPECT_FALSE(names.isNameCreated(name));
                EXPECT_EQ(&get(names, object), &name);
                EXPECT_LE(name.size(), maxNameLength) << name;
                ++seen;
            } catch (const ExportException& failure) {
                EXPECT_STREQ(failure.what(), "仪表泡未连接对象");
            }
        }
    }
    EXPECT_GT(seen, components.size() * std::size(forms) * 9 / 10);
}

TEST_P(GeneratedPlant, StypesAndShortNamesTellKeysApart) {
    std::map<std::string, std::string> shortOfStype;
    for (const HxDbSmrtlnEntity* object : components) {
        if (HxDbBalloon::cast(object) == nullptr) {
            const std::string& shortName = names.components.getSpcoShortName(object);
            EXPECT_EQ(shortOfStype.try_emplace(names.components.getStype(object), shortName).first->second, shortName);
        }
    }
    std::set<std::string> shorts;
    for (const auto& [stype, shortName] : shortOfStype) {
        EXPECT_TRUE(shorts.insert(shortName).second) << shortName;
    }
}

TEST_P(GeneratedPlant, PipesBranchesAndMembersAreUnique) {
    std::set<std::string> pipes, branches, members;
    std::size_t memberCount = 0;
    for (HxDbObject* object : everything) {
        if (HextPipeline::cast(object) == nullptr) {
            continue;
        }
        EXPECT_TRUE(pipes.insert(names.owners.getPipeName(object)).second);
        std::vector<std::vector<HxDbObjectId>> idLists;
        smrtln::getBranchOfPipeline_piping(object->objectId(), idLists);
        for (const auto& ids : idLists) {
            std::vector<HxDbSmrtlnEntity*> branch;
            for (const HxDbObjectId id : ids) {
                branch.push_back(openAs<HxDbSmrtlnEntity>(id));
            }
            const std::string name = names.branches.createBranchName(branch);
            EXPECT_EQ(names.find(name)->kind, NameKind::Branch);
            EXPECT_EQ(names.branches.getBranchNameOf(branch.front()).empty(), false);
            branches.insert(name);
        }
    }
    for (const HxDbSmrtlnEntity* object : components) {
        try {
            members.insert(names.branches.getMemberName(object));
            ++memberCount;
        } catch (const ExportException& failure) {
            EXPECT_NE(std::string(failure.what()).find("未找到分支"), std::string::npos);
        }
    }
    EXPECT_GT(branches.size(), 1U);
    EXPECT_GT(memberCount, components.size() / 2);
    EXPECT_EQ(members.size(), memberCount);
}

TEST_P(GeneratedPlant, NamesDoNotDependOnWhatWasAskedBetween) {
    NameManager other;
    other.types.loadSkeyTable();
    other.types.loadTypeTable();
    // The second manager is asked for each object once, the first for each twice and in between for older ones.
    for (std::size_t i = 0; i < components.size(); ++i) {
        const HxDbSmrtlnEntity* object = components[i];
        if (HxDbBalloon::cast(object) != nullptr) {
            continue;
        }
        EXPECT_EQ(names.components.getSpcoName(object), other.components.getSpcoName(object));
        EXPECT_EQ(names.components.getScomName(object), other.components.getScomName(object));
        EXPECT_EQ(names.components.getStype(object), other.components.getStype(object));
        const HxDbSmrtlnEntity* older = components[i / 2];
        if (HxDbBalloon::cast(older) == nullptr) {
            names.components.getSpcoName(older);
            names.components.getComponentName(older);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, GeneratedPlant, testing::Values(1, 2, 3));

}  // namespace
