// What reading holds at once, at the worst, over the size of what is read.

#include "formats/shoot_file.h"
#include "model/product_json.h"
#include "model/shoot_json.h"
#include "tests/support/examples.h"
#include "tests/support/wrapped_allocation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iostream>
#include <string>
#include <tuple>
#include <vector>

namespace {

std::ptrdiff_t held = 0;
std::ptrdiff_t most = 0;

} // namespace

namespace vantor::testing {

bool isGranted() {
    return true;
}
void obtained(std::size_t bytes) {
    held += static_cast<std::ptrdiff_t>(bytes);
    most = std::max(most, held);
}
void returned(std::size_t bytes) {
    held -= static_cast<std::ptrdiff_t>(bytes);
}

namespace {

using Read = std::function<std::size_t(const std::string&)>;

// What `read` gives back counts, and so does the input: whoever reads a file has it in memory.
void expectAtMostSixTimes(const char* what, const std::string& bytes, const Read& read,
                          std::size_t expected) {
    most = held;
    const auto before = held - static_cast<std::ptrdiff_t>(bytes.size());
    EXPECT_EQ(read(bytes), expected) << what;
    const auto ratio = static_cast<double>(most - before) / static_cast<double>(bytes.size());
    std::cout << what << ": " << bytes.size() << " bytes, " << ratio << " times that\n";
    EXPECT_LE(ratio, 6) << what;
}

std::size_t shootsOf(const std::string& json) {
    return readShoots(json, DateForm::SecondsSinceReference).value_or(std::vector<Shoot>()).size();
}

std::size_t setsOfShoots(const std::string& json) {
    return readShoots(json, DateForm::SecondsSinceReference).value().at(0).sets.size();
}

std::size_t productsOf(const std::string& json) {
    return readCatalog(json).value().products.size();
}

// A list, and what stands around it.
std::string repeated(std::string_view element, int count, std::string_view open = "[",
                     std::string_view close = "]") {
    std::string out(open);
    out.reserve(open.size() + (element.size() + 1) * static_cast<std::size_t>(count) + close.size());
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            out += ',';
        out += element;
    }
    out += close;
    out.shrink_to_fit();
    return out;
}

constexpr auto kId = "00000000-0000-4000-8000-000000000001";
const std::string kIdMember = R"("id":")" + std::string(kId) + "\"";
const std::string kEmptyShoot =
    R"({"client":"","date":0,)" + kIdMember + R"(,"location":"","name":"","sets":[]})";
const std::string kItem = R"({"color":"",)" + kIdMember + R"(,"name":""})";
const std::string kActivation = R"({"activatedAt":0,"setId":")" + std::string(kId) + "\"}";
const std::string kProduct = "{" + kIdMember + R"(,"name":"","colors":[],"brand":""})";

// A set of that list of items, whose texts are all that text.
std::string setWith(const std::string& items, const std::string& text = "") {
    return R"({"brand":")" + text + R"(",)" + kIdMember + R"(,"items":)" + items + R"(,"location":")" + text +
           R"(","model":")" + text + R"(","setNumber":")" + text + R"(","timestamp":0})";
}

// A shoot whose list of that name is this one.
std::string shootWith(const std::string& list, const std::string& name = "sets") {
    return R"({"client":"","date":0,)" + kIdMember + R"(,"location":"","name":"",")" + name + "\":" + list +
           (name == "sets" ? "}" : R"(,"sets":[]})");
}

TEST(LoadingMemory, OfTenThousandSetsIsAtMostSixTimesTheFile) {
    auto shoot = ibiza();
    shoot.sets.clear();
    for (unsigned i = 0; i < 10'000; ++i) {
        auto set = noorderlicht();
        set.id = numberedId(i);
        set.setNumber = std::to_string(i);
        set.items.push_back(SetItem::make("leather boots", "dark chocolate brown"));
        set.email = "anna.de.vries@example.com";
        shoot.sets.push_back(set);
        shoot.activationLog.push_back({set.id, kMorning});
    }
    JsonWriter out(JsonWriter::Layout::Compact);
    writeShoots(out, {shoot}, DateForm::SecondsSinceReference);
    expectAtMostSixTimes("the store", std::string(out.written()), setsOfShoots, 10'000);
    expectAtMostSixTimes(
        "a shoot file", writeShootFile(shoot),
        [](const std::string& bytes) { return readShootFile(bytes)->sets.size(); }, 10'000);
}

// Many lists are just above a power of two, where one that doubles has the most room to spare.
TEST(LoadingMemory, OfWhatTakesTheMostIsAtMostSixTimesTheFile) {
    const std::string tooLongToBeKeptInPlace(16, 'x');
    const std::vector<std::tuple<const char*, std::string, Read, std::size_t>> cases{
        {"many empty shoots", repeated(kEmptyShoot, 40'000), shootsOf, 40'000},
        {"just above a power of two", repeated(kEmptyShoot, 32'769), shootsOf, 32'769},
        {"many empty sets", "[" + shootWith(repeated(setWith("[]"), 32'769)) + "]", setsOfShoots, 32'769},
        {"many shoots of one set", repeated(shootWith("[" + setWith("[]") + "]"), 32'769), shootsOf, 32'769},
        {"many tiny items", "[" + shootWith("[" + setWith(repeated(kItem, 65'537)) + "]") + "]", setsOfShoots,
         1},
        {"many sets of one item", "[" + shootWith(repeated(setWith("[" + kItem + "]"), 32'769)) + "]",
         setsOfShoots, 32'769},
        {"many activations", "[" + shootWith(repeated(kActivation, 65'537), "activationLog") + "]", shootsOf,
         1},
        {"short texts", "[" + shootWith(repeated(setWith("[]", tooLongToBeKeptInPlace), 32'769)) + "]",
         setsOfShoots, 32'769},
        {"one long text", "[" + std::string(kEmptyShoot).insert(11, std::string(4'194'305, 'x')) + "]",
         shootsOf, 1},
        {"refused at its end", repeated(kEmptyShoot, 32'769, "[", ",{}]"), shootsOf, 0},
        {"refused for its depth", std::string(4'000'000, '['), shootsOf, 0},
        {"depth in what is passed over", R"([{"ignored":)" + std::string(4'000'000, '['), shootsOf, 0},
        {"many products", repeated(kProduct, 65'537, R"({"products":[)", R"(],"clients":[],"brands":[]})"),
         productsOf, 65'537},
    };
    for (const auto& [what, json, read, expected] : cases)
        expectAtMostSixTimes(what, json, read, expected);
}

} // namespace
} // namespace vantor::testing
