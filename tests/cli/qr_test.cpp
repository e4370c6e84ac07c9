// vantor-prep-cli qr, as a process.

#include "formats/shoot_file.h"
#include "tests/cli/program.h"
#include "tests/output/code_readers.h"
#include "tests/support/table.h"

#include <gmock/gmock.h>

namespace vantor::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::UnorderedElementsAre;

class QrCall : public Program {
protected:
    void SetUp() override { write("a.csv", "Set;Merk\n1;Marvis\n"); }

    [[nodiscard]] std::set<std::string> namesIn(const fs::path& folder) const {
        std::set<std::string> found;
        for (const auto& entry : fs::directory_iterator(at(folder)))
            found.insert(entry.path().filename().string());
        return found;
    }

    // What the PNG's code says; the picture's size is checked on the way.
    [[nodiscard]] std::string textIn(const fs::path& name) const {
        const auto picture = decodePng(read(name));
        EXPECT_TRUE(picture && picture->width == 600 && picture->height == 600) << name;
        return picture ? readByZxing(*picture).value_or("(unreadable)") : "";
    }

    // The names of the files that such sets get.
    [[nodiscard]] std::set<std::string> namesOf(SetList sets) const {
        writeShoot("a.vantor", std::move(sets));
        fs::remove_all(at("codes"));
        EXPECT_EQ(done({"qr", "a.vantor", "--output", "codes"}), "");
        return namesIn("codes");
    }
};

TEST_F(QrCall, MakesOneReadableCodeASet) {
    const auto sets = readShootFile(example("zomer-op-texel.vantor")).value().sets;
    EXPECT_EQ(namesOf(sets).size(), sets.size());
    for (const auto& set : sets)
        EXPECT_EQ(textIn("codes/SET-" + set.setNumber + "-" + set.brand + ".png"), set.toQRText());
}

TEST_F(QrCall, NamesFilesAfterTheirSets) {
    EXPECT_THAT(namesOf({setOf("12", "Marvis"), setOf("3", "Zoë & Çelik")}),
                UnorderedElementsAre("SET-12-Marvis.png", "SET-3-Zoë & Çelik.png"));
    // A dash for a slash and for what could drive a terminal.
    EXPECT_THAT(namesOf({setOf("1/2", "Eb/Vloed/"), setOf("../..", "x"), setOf("1\x1B[2J", "a\nb\u009Bc"),
                         setOf("2", "\u202Egnp.\u2066x\u2069\u200F")}),
                UnorderedElementsAre("SET-1-2-Eb-Vloed-.png", "SET-..-..-x.png", "SET-1-[2J-a-b-c.png",
                                     "SET-2--gnp.-x--.png"));
    EXPECT_EQ(textIn("codes/SET-1-2-Eb-Vloed-.png"), "SET:1/2\nBRAND:Eb/Vloed/");
    EXPECT_THAT(namesOf({setOf("1a", "Zoë"), setOf("1A", "ZOË")}),
                UnorderedElementsAre("SET-1a-Zoë.png", "SET-1A-ZOË-2.png"));
}

TEST_F(QrCall, NumbersEqualNames) {
    const auto names = namesOf({setOf("1", "Marvis"), setOf("1", "Marvis"), setOf("1", "Marvis-2"),
                                setOf("1", "Marvis"), setOf("", "")});
    EXPECT_EQ(names.size(), 5U);
    for (const auto* const name : {"SET-1-Marvis.png", "SET-1-Marvis-2.png", "SET--.png"})
        EXPECT_TRUE(names.contains(name)) << name;
    // Whichever of them was numbered, every set has its file.
    std::multiset<std::string> texts;
    for (const auto& name : names)
        texts.insert(textIn("codes/" + name));
    EXPECT_THAT(texts, UnorderedElementsAre("", "SET:1\nBRAND:Marvis", "SET:1\nBRAND:Marvis",
                                            "SET:1\nBRAND:Marvis", "SET:1\nBRAND:Marvis-2"));
}

TEST_F(QrCall, CutsNamesThatNoDiskTakes) {
    const auto longBrand = repeated(300, "é");
    const auto names = namesOf({setOf("1", longBrand), setOf("1", longBrand)});
    ASSERT_EQ(names.size(), 2U);
    for (const auto& name : names) {
        EXPECT_THAT(name, ::testing::StartsWith("SET-1-ééé"));
        EXPECT_THAT(name, ::testing::AnyOf(::testing::EndsWith("é.png"), ::testing::EndsWith("é-2.png")));
        EXPECT_THAT(name.size(), ::testing::AllOf(::testing::Le(255U), ::testing::Gt(250U)));
        EXPECT_EQ(textIn("codes/" + name), "SET:1\nBRAND:" + longBrand);
    }
}

TEST_F(QrCall, NamesSetsThatFitNoCodeAndMakesTheRest) {
    const std::string tooLong(2332 - 12, 'x');
    writeShoot("a.vantor", {setOf("1", tooLong.substr(1)), setOf("2", tooLong), setOf("3", "Zoë")});
    const auto run = this->run({"qr", "a.vantor", "--output", "codes"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_EQ(run.errors,
              "vantor-prep-cli: Set 2 — " + tooLong + ": de tekst past niet in een QR-code; overgeslagen\n");
    EXPECT_EQ(namesIn("codes").size(), 2U);
    EXPECT_TRUE(namesIn("codes").contains("SET-3-Zoë.png"));
}

TEST_F(QrCall, MakesMissingFoldersReplacesItsOwnFilesLeavesOthersAndSaysWhereItCannotWrite) {
    const fs::path folder = "zomer/op Texel";
    done({"qr", "a.csv", "--output", folder});
    write(folder / "SET-1-Marvis.png", "van gisteren");
    write(folder / "SET-2-Marvis.png", "van gisteren");
    done({"qr", "a.csv", "--output", folder});
    EXPECT_EQ(textIn(folder / "SET-1-Marvis.png"), "SET:1\nBRAND:Marvis");
    EXPECT_EQ(read(folder / "SET-2-Marvis.png"), "van gisteren");
    EXPECT_EQ(namesIn(folder).size(), 2U);

    expectFailure({"qr", "a.csv", "--output", "a.csv"}, "a.csv: map kan niet gemaakt worden");
    EXPECT_EQ(read("a.csv"), "Set;Merk\n1;Marvis\n");
    fs::create_directories(at("codes/SET-1-Marvis.png"));
    expectFailure({"qr", "a.csv", "--output", "codes"}, "codes/SET-1-Marvis.png: kan niet geschreven worden");
    EXPECT_THAT(namesIn("codes"), UnorderedElementsAre("SET-1-Marvis.png"));
}

} // namespace
} // namespace vantor::testing
