#include "store/document.h"
#include "store/product_catalog.h"
#include "store/shoot_manager.h"
#include "tests/store/store_fixture.h"
#include "tests/support/generators.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <functional>
#include <map>

#include "edit/restore_edits.h"
#include "edit/shoot_edits.h"

namespace vantor {
namespace {

using ::testing::ElementsAre;
using testing::kMorning;

// What a person does, what it is about, and a text for it.
using Acts = std::vector<std::tuple<unsigned, unsigned, std::string>>;

// A document on files in memory, driven through both stores.
class Driven {
public:
    Driven() { document.perform(addShoot(Shoot::make("Texel", "", "Nike", kMorning))); }

    // One act of a person; what it is about is picked by numbers.
    void act(unsigned kind, unsigned which, const std::string& text) {
        const std::vector<std::function<void()>> acts{
            [&] { shoots.addShoot(Shoot::make(text, "", text, kMorning)); },
            [&] { shoots.deleteShoot(idOf(pickedShoot(which))); },
            [&] { shoots.addSet(idOf(pickedShoot(which)), setOf(text)); },
            [&] { shoots.addSet(idOf(pickedShoot(which)), setOf("once more")); },
            [&] { shoots.deleteSet(idOf(pickedSet(which))); },
            [&] { update(which, text); },
            [&] { shoots.importCSV("Set;Merk\n1;a\n2;" + text + "\n3;c", idOf(pickedShoot(which))); },
            [&] { shoots.importShoot(pickedShoot(which) != nullptr ? *pickedShoot(which) : Shoot()); },
            [&] { catalog.addProduct(text, {text}, "Nike"); },
            [&] { catalog.importCSV("zebra;rood\n" + text + ";blauw\nappel", text); },
            [&] { catalog.updateProduct(idOf(picked(catalog.products(), which)), text, {}, "Élan"); },
            [&] { catalog.deleteProduct(idOf(picked(catalog.products(), which))); },
            [&] { catalog.addClient(text); },
            [&] { catalog.addBrand(text); },
            [&] { catalog.deleteClient(catalog.clients().empty() ? "" : catalog.clients().front()); },
            [&] { restore(which); },
            [&] { kept.push_back(document.library()); },
        };
        if (kind < acts.size())
            acts[kind]();
        else
            scan(which);
    }
    void actAll(const Acts& all) {
        for (const auto& [kind, which, text] : all)
            act(kind, which, text);
    }

    // A card of a set that is there, or of none.
    void scan(unsigned which) {
        const auto* const known = which % 3 != 0 ? pickedSet(which) : nullptr;
        const auto scanned = shoots.handleScanInput(
            known != nullptr ? known->toQRText() : "SET:" + std::to_string(which) + "\nBRAND:Nieuw");
        if (scanned && shoots.activeShoot() != nullptr)
            logs[*shoots.activeShootId()].push_back({scanned->id, kMorning});
    }

    static std::pair<std::string, std::string> nothing() {
        return {"[]", R"({"products":[],"clients":[],"brands":[]})"};
    }

    // Both stores, without the log.
    [[nodiscard]] std::pair<std::string, std::string> stored() const {
        auto all = document.library().shoots;
        for (auto& shoot : all)
            shoot.activationLog.clear();
        return {testing::jsonOf(all), testing::jsonOf(document.library().catalog)};
    }

    [[nodiscard]] bool everyEntryIsThere() const {
        return std::ranges::all_of(document.library().shoots, [&](const Shoot& shoot) {
            const auto logged = logs.find(shoot.id);
            return std::ranges::is_permutation(
                shoot.activationLog, logged != logs.end() ? logged->second : std::vector<SetActivation>());
        });
    }

    testing::MemoryFileStore files;
    testing::StandingClock clock{kMorning};
    StoreFile shootsFile{files, "/shoots.json", clock.clock()};
    StoreFile catalogFile{files, "/catalog.json", clock.clock()};
    Document document{&shootsFile, &catalogFile, clock.clock()};
    ShootManager shoots{document};
    ProductCatalog catalog{document};
    std::map<Uuid, std::vector<SetActivation>> logs;
    // Earlier versions.
    std::vector<Library> kept;

protected:
    static SetData setOf(const std::string& number) {
        auto set = SetData::make(kMorning);
        set.setNumber = number;
        return set;
    }

private:
    void restore(unsigned which) {
        if (kept.empty())
            return;
        auto version = kept[which % kept.size()];
        if (which % 2 == 0)
            document.perform(restoreAll(document.library(), {version.shoots, version.catalog}, "toen"));
        else if (!version.shoots.empty())
            document.perform(restoreShoot(document.library(), version.shoots[which % version.shoots.size()]));
    }

    // The record that a number picks; null where there is none.
    template <typename Records>
    static const typename Records::value_type* picked(const Records& all, unsigned which) {
        return all.empty() ? nullptr : &all[which % all.size()];
    }
    [[nodiscard]] const Shoot* pickedShoot(unsigned which) const { return picked(shoots.shoots(), which); }
    [[nodiscard]] const SetData* pickedSet(unsigned which) const {
        const auto* const shoot = pickedShoot(which);
        return shoot != nullptr ? picked(shoot->sets, which / 7) : nullptr;
    }
    static Uuid idOf(const auto* record) { return record != nullptr ? record->id : Uuid(); }
    void update(unsigned which, const std::string& text) {
        if (const auto* const set = pickedSet(which)) {
            auto updated = *set;
            updated.brand = text;
            shoots.updateSet(set->id, updated);
        }
    }
};

rc::Gen<Acts> acts() {
    const auto name = rc::gen::element<std::string>("a", "B", "Élan", "zee", "nike", "", " ");
    return rc::gen::container<Acts>(
        rc::gen::tuple(rc::gen::inRange(0U, 20U), rc::gen::inRange(0U, 100U), name));
}

RC_GTEST_PROP(DocumentProperty, UndoneToTheStartAndRedoneToTheEndEverythingIsAsItWas, ()) {
    Driven driven;
    const auto start = driven.stored();
    driven.actAll(*acts());
    const auto end = driven.stored();
    const auto onDisk = driven.files.files;
    while (driven.document.canUndo())
        driven.document.undo();
    RC_ASSERT(driven.stored() == Driven::nothing());
    // The first step made the shoot that everything began with.
    driven.document.redo();
    RC_ASSERT(driven.stored() == start);
    RC_ASSERT(driven.everyEntryIsThere());
    while (driven.document.canRedo())
        driven.document.redo();
    RC_ASSERT(driven.stored() == end);
    RC_ASSERT(driven.everyEntryIsThere());
    RC_ASSERT(driven.files.files.at("/shoots.json") == onDisk.at("/shoots.json"));
}

RC_GTEST_PROP(DocumentProperty, NoLogEntryIsLostWhateverIsUndoneBetweenScans, ()) {
    Driven driven;
    for (const auto& [kind, which, text] : *acts()) {
        driven.act(kind, which, text);
        if (which % 4 == 0)
            driven.document.undo();
        if (which % 9 == 0)
            driven.document.redo();
        RC_ASSERT(driven.everyEntryIsThere());
    }
}

RC_GTEST_PROP(DocumentProperty, VersionThatIsPutBackIsAsItWas, ()) {
    Driven driven;
    driven.actAll(*acts());
    const auto version = driven.document.library();
    const auto then = driven.stored();
    driven.actAll(*acts());
    const auto now = driven.stored();
    auto change = restoreAll(driven.document.library(), {version.shoots, version.catalog}, "toen");
    driven.document.perform(std::move(change));
    RC_ASSERT(driven.stored() == then);
    if (now != then)
        driven.document.undo();
    RC_ASSERT(driven.stored() == now);
}

class DocumentTest : public ::testing::Test, protected Driven {
protected:
    Uuid newSet(const std::string& number) {
        const auto set = setOf(number);
        shoots.addSet(*shoots.activeShootId(), set);
        return set.id;
    }
    template <typename Act>
    std::size_t savesOf(Act act) {
        const auto before = files.replacements.size();
        act();
        return files.replacements.size() - before;
    }
};

TEST_F(DocumentTest, StepsAreNamedAfterWhatTheyDidAndSaveOnceAlsoWhenTheyAreTakenBackOrAreNone) {
    const auto set = newSet("12");
    EXPECT_EQ(document.undoName(), "Set 12 toegevoegd");
    shoots.deleteSet(set);
    EXPECT_EQ(document.undoName(), "Set 12 verwijderd");
    document.undo();
    EXPECT_EQ(document.undoName(), "Set 12 toegevoegd");
    EXPECT_EQ(document.redoName(), "Set 12 verwijderd");
    EXPECT_EQ(savesOf([&] { shoots.importCSV("Set\n1;\n2", *shoots.activeShootId()); }), 1U);
    EXPECT_EQ(savesOf([&] { shoots.handleScanInput("SET:99"); }), 1U) << "an unknown card";
    EXPECT_EQ(savesOf([&] { document.undo(); }), 1U);
    EXPECT_EQ(savesOf([&] { document.redo(); }), 1U);
    const auto name = document.undoName();
    EXPECT_EQ(savesOf([&] { shoots.deleteSet(Uuid::random()); }), 1U);
    EXPECT_EQ(savesOf([&] { catalog.deleteClient("niemand"); }), 1U);
    EXPECT_EQ(document.undoName(), name) << "what changes nothing is no step";
}

TEST_F(DocumentTest, ActivatingIsNoStepAndLeavesWhatWasUndone) {
    const auto set = newSet("1");
    newSet("2");
    document.undo();
    shoots.activateSet(set);
    EXPECT_TRUE(document.canRedo());
    document.redo();
    document.undo();
    EXPECT_EQ(shoots.activeSetId(), set) << "an older step was taken back";
    document.undo();
    EXPECT_FALSE(shoots.activeSet()) << "the set is gone again";
    EXPECT_EQ(shoots.activeShoot()->activationLog.size(), 1U) << "what was logged stays";
}

TEST_F(DocumentTest, WhatWasActiveIsActiveAgainUnlessSomethingElseIsSince) {
    const auto texel = *shoots.activeShootId();
    const auto one = newSet("1");
    shoots.addShoot(Shoot::make("Najaar", "", "", kMorning));
    shoots.setActiveShootId(texel);
    shoots.activateSet(one);
    shoots.deleteShoot(texel);
    document.undo();
    EXPECT_EQ(shoots.activeShootId(), texel);
    EXPECT_EQ(shoots.activeSetId(), one);
    const auto two = newSet("2");
    shoots.activateSet(two);
    document.undo();
    document.redo();
    EXPECT_EQ(shoots.exportCSV(texel), "Set;Merk;Items;Model;Locatie;Email;Getagd\n2;;;;;;0\n1;;;;;;0");
    EXPECT_EQ(shoots.activeShootId(), texel);
}

TEST_F(DocumentTest, TellsWhatHasChangedOnceAllIsAsItSays) {
    const auto set = newSet("1");
    std::vector<Changed> told;
    const auto listening = document.didChange().connect([&](const Changed& changed) {
        told.push_back(changed);
        EXPECT_EQ(shoots.activeSetId(), set);
    });
    shoots.activateSet(set);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].aspects, ElementsAre(Aspect::ActiveSetId, Aspect::ActiveShootId, Aspect::Shoots));
    EXPECT_THAT(told[0].shootsWithOtherSets, ::testing::IsEmpty());
    newSet("2");
    EXPECT_THAT(told[1].shootsWithOtherSets, ElementsAre(*shoots.activeShootId()));
    EXPECT_FALSE(told[1].shootList);
}

TEST_F(DocumentTest, OldestStepsGoFirst) {
    for (std::size_t i = 0; i <= Document::kMostSteps; ++i)
        newSet(std::to_string(i));
    std::size_t steps = 0;
    for (; document.canUndo(); ++steps)
        document.undo();
    EXPECT_EQ(steps, Document::kMostSteps);
    EXPECT_EQ(shoots.activeShoot()->sets.size(), 1U);
}

TEST_F(DocumentTest, VersionThatIsPutBackHasAnActiveShoot) {
    const auto version = document.library();
    shoots.deleteShoot(*shoots.activeShootId());
    const auto putBack = [&] {
        document.perform(restoreAll(document.library(), {version.shoots, std::nullopt}, "toen"));
        return shoots.activeShootId();
    };
    EXPECT_EQ(putBack(), version.shoots[0].id);
    shoots.addShoot(Shoot::make("Najaar", "", "", kMorning));
    EXPECT_EQ(putBack(), version.shoots[0].id) << "the one of now is not in it";
    document.undo();
    EXPECT_EQ(shoots.activeShoot()->name, "Najaar");
}

} // namespace
} // namespace vantor
