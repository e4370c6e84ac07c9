// vantor-prep-cli qr, as a process.

#include "base/timestamp.h"
#include "formats/shoot_file.h"
#include "tests/cli/program.h"
#include "tests/output/code_readers.h"

#include <gmock/gmock.h>

namespace vantor::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class QrCall : public Program {
protected:
    [[nodiscard]] std::set<std::string> namesIn(const fs::path& folder) const {
        std::set<std::string> found;
        for (const auto& entry : fs::directory_iterator(at(folder)))
            found.insert(entry.path().filename().string());
        return found;
    }

    // What the PNG's code says; the picture's size is checked on the way.
    [[nodiscard]] std::string textIn(const fs::path& name) const {
        const auto picture = decodePng(read(name));
        EXPECT_TRUE(picture) << name << " is no PNG";
        if (!picture)
            return "";
        EXPECT_EQ(picture->width, 600);
        EXPECT_EQ(picture->height, 600);
        return readByZxing(*picture).value_or("(unreadable)");
    }

    void writeShoot(const std::string& name,
                    const std::vector<std::pair<std::string, std::string>>& sets) const {
        auto shoot = Shoot::make("Proef", "", "", Timestamp{0});
        for (const auto& [number, brand] : sets) {
            auto set = SetData::make(Timestamp{0});
            set.setNumber = number;
            set.brand = brand;
            shoot.sets.push_back(std::move(set));
        }
        write(name, writeShootFile(shoot));
    }
};

TEST_F(QrCall, MakesOneReadableCodeASet) {
    write("a.vantor", example("zomer-op-texel.vantor"));
    const auto run = this->run({"qr", "a.vantor", "--output", "codes"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_THAT(run.output, IsEmpty());
    EXPECT_THAT(run.errors, IsEmpty());
    const auto shoot = readShootFile(example("zomer-op-texel.vantor"));
    ASSERT_TRUE(shoot);
    EXPECT_EQ(namesIn("codes").size(), shoot->sets.size());
    for (const auto& set : shoot->sets)
        EXPECT_EQ(textIn("codes/SET-" + set.setNumber + "-" + set.brand + ".png"), set.toQRText());
}

TEST_F(QrCall, NamesFilesAsTheSaveDialogProposes) {
    write("a.csv", "Set;Merk\n12;Marvis\n3;Zoë & Çelik\n");
    ASSERT_EQ(run({"qr", "a.csv", "--output", "codes"}).status, kDone);
    EXPECT_THAT(namesIn("codes"), UnorderedElementsAre("SET-12-Marvis.png", "SET-3-Zoë & Çelik.png"));
}

TEST_F(QrCall, PutsADashForASlash) {
    writeShoot("a.vantor", {{"1/2", "Eb/Vloed/"}, {"../..", "x"}});
    ASSERT_EQ(run({"qr", "a.vantor", "--output", "codes"}).status, kDone);
    EXPECT_THAT(namesIn("codes"), UnorderedElementsAre("SET-1-2-Eb-Vloed-.png", "SET-..-..-x.png"));
    EXPECT_EQ(textIn("codes/SET-1-2-Eb-Vloed-.png"), "SET:1/2\nBRAND:Eb/Vloed/");
}

TEST_F(QrCall, PutsADashForAControlCharacter) {
    writeShoot("a.vantor", {{"1\x1B[2J", "a\nb\u009Bc"}, {"2", "\u202Egnp.\u2066x\u2069\u200F"}});
    ASSERT_EQ(run({"qr", "a.vantor", "--output", "codes"}).status, kDone);
    EXPECT_THAT(namesIn("codes"), UnorderedElementsAre("SET-1-[2J-a-b-c.png", "SET-2--gnp.-x--.png"));
}

TEST_F(QrCall, NumbersEqualNames) {
    writeShoot("a.vantor", {{"1", "Marvis"}, {"1", "Marvis"}, {"1", "Marvis-2"}, {"1", "Marvis"}, {"", ""}});
    ASSERT_EQ(run({"qr", "a.vantor", "--output", "codes"}).status, kDone);
    const auto names = namesIn("codes");
    EXPECT_EQ(names.size(), 5U);
    EXPECT_TRUE(names.contains("SET-1-Marvis.png"));
    EXPECT_TRUE(names.contains("SET-1-Marvis-2.png"));
    EXPECT_TRUE(names.contains("SET--.png"));
    // Whichever of them was numbered, every set has its file.
    std::multiset<std::string> texts;
    for (const auto& name : names) {
        if (name != "SET--.png")
            texts.insert(textIn("codes/" + name));
    }
    EXPECT_THAT(texts, UnorderedElementsAre("SET:1\nBRAND:Marvis", "SET:1\nBRAND:Marvis",
                                            "SET:1\nBRAND:Marvis", "SET:1\nBRAND:Marvis-2"));
}

TEST_F(QrCall, NumbersNamesThatDifferOnlyInCase) {
    writeShoot("a.vantor", {{"1a", "Zoë"}, {"1A", "ZOË"}});
    ASSERT_EQ(run({"qr", "a.vantor", "--output", "codes"}).status, kDone);
    EXPECT_THAT(namesIn("codes"), UnorderedElementsAre("SET-1a-Zoë.png", "SET-1A-ZOË-2.png"));
}

TEST_F(QrCall, CutsNamesThatNoDiskTakes) {
    std::string longBrand;
    for (int i = 0; i < 300; ++i)
        longBrand += "é";
    writeShoot("a.vantor", {{"1", longBrand}, {"1", longBrand}});
    const auto run = this->run({"qr", "a.vantor", "--output", "codes"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_THAT(run.errors, IsEmpty());
    const auto names = namesIn("codes");
    ASSERT_EQ(names.size(), 2U);
    for (const auto& name : names) {
        EXPECT_THAT(name, ::testing::StartsWith("SET-1-ééé"));
        EXPECT_THAT(name, ::testing::AnyOf(::testing::EndsWith("é.png"), ::testing::EndsWith("é-2.png")));
        EXPECT_THAT(name.size(), ::testing::AllOf(::testing::Le(255U), ::testing::Gt(250U)));
        EXPECT_EQ(textIn("codes/" + name), "SET:1\nBRAND:" + longBrand);
    }
}

TEST_F(QrCall, NamesSetsThatFitNoCodeAndMakesTheRest) {
    writeShoot("a.vantor",
               {{"1", std::string(2331 - 12, 'x')}, {"2", std::string(2332 - 12, 'x')}, {"3", "Zoë"}});
    const auto run = this->run({"qr", "a.vantor", "--output", "codes"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_EQ(run.errors, "vantor-prep-cli: Set 2 — " + std::string(2332 - 12, 'x') +
                              ": de tekst past niet in een QR-code; overgeslagen\n");
    const auto names = namesIn("codes");
    EXPECT_EQ(names.size(), 2U);
    EXPECT_TRUE(names.contains("SET-3-Zoë.png"));
}

TEST_F(QrCall, MakesMissingFolders) {
    write("a.csv", "Set;Merk\n1;Marvis\n");
    ASSERT_EQ(run({"qr", "a.csv", "--output", "zomer/op Texel/codes"}).status, kDone);
    EXPECT_THAT(namesIn("zomer/op Texel/codes"), UnorderedElementsAre("SET-1-Marvis.png"));
}

TEST_F(QrCall, ReplacesItsOwnFilesAndLeavesOthers) {
    write("a.csv", "Set;Merk\n1;Marvis\n");
    fs::create_directory(at("codes"));
    write("codes/SET-1-Marvis.png", "van gisteren");
    write("codes/SET-2-Marvis.png", "van gisteren");
    ASSERT_EQ(run({"qr", "a.csv", "--output", "codes"}).status, kDone);
    EXPECT_EQ(textIn("codes/SET-1-Marvis.png"), "SET:1\nBRAND:Marvis");
    EXPECT_EQ(read("codes/SET-2-Marvis.png"), "van gisteren");
    EXPECT_EQ(namesIn("codes").size(), 2U);
}

TEST_F(QrCall, SaysWhereItCannotWrite) {
    write("a.csv", "Set;Merk\n1;Marvis\n");
    write("bestand", "x");
    const auto onFile = run({"qr", "a.csv", "--output", "bestand"});
    EXPECT_EQ(onFile.status, kFailed);
    EXPECT_EQ(onFile.errors, "vantor-prep-cli: bestand: map kan niet gemaakt worden\n");
    EXPECT_EQ(read("bestand"), "x");

    fs::create_directories(at("codes/SET-1-Marvis.png"));
    const auto onFolder = run({"qr", "a.csv", "--output", "codes"});
    EXPECT_EQ(onFolder.status, kFailed);
    EXPECT_EQ(onFolder.errors, "vantor-prep-cli: codes/SET-1-Marvis.png: kan niet geschreven worden\n");
    EXPECT_THAT(namesIn("codes"), UnorderedElementsAre("SET-1-Marvis.png"));
}

} // namespace
} // namespace vantor::testing
