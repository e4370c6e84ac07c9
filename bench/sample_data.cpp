#include "bench/sample_data.h"

#include <array>
#include <string_view>
#include <utility>

namespace vantor::bench {
namespace {

constexpr std::array<std::string_view, 6> kBrands{"Marvis",    "Noorderlicht", "Zeewind",
                                                  "Café Noir", "Duinroos",     "Brûlée"};
constexpr std::array<std::string_view, 8> kGarments{"coated pants", "gebreide trui", "linnen blouse",
                                                    "wollen jas",   "plissérok",     "jeans",
                                                    "overhemd",     "regenjack"};
constexpr std::array<std::string_view, 7> kColors{"crème", "blue navy", "zwart", "roestbruin",
                                                  "écru",  "mosgroen",  ""};
constexpr std::array<std::string_view, 5> kModels{"Anna", "Zoë", "Maïke", "Jürgen", "Sem"};

template <typename List>
std::string pick(const List& list, std::size_t number) {
    return std::string(list[number % list.size()]);
}

} // namespace

SetData sampleSet(std::size_t number, std::size_t items, std::size_t textBytes) {
    auto set = SetData::make(Timestamp{800000000.0 + static_cast<double>(number) * 61.25});
    set.setNumber = std::to_string(number + 1);
    set.brand = pick(kBrands, number);
    for (std::size_t i = 0; i < items; ++i)
        set.items.push_back(SetItem::make(pick(kGarments, number + i), pick(kColors, number / 3 + i)));
    set.model = pick(kModels, number / 2);
    set.location = "Studio " + pick(kModels, number / 7);
    const auto length = set.toQRText().size();
    if (length < textBytes)
        set.location += std::string(textBytes - length, 'x');
    return set;
}

SetList sampleSets(std::size_t count, std::size_t items, std::size_t textBytes) {
    SetList sets;
    for (std::size_t i = 0; i < count; ++i)
        sets.push_back(sampleSet(i, items, textBytes));
    return sets;
}

std::vector<Shoot> sampleShoots(std::size_t sets) {
    auto shoot = Shoot::make("Zomer op Texel", "Texel", "Noorderlicht", Timestamp{800000000});
    shoot.sets = sampleSets(sets, 5);
    std::vector<Shoot> shoots;
    shoots.push_back(std::move(shoot));
    return shoots;
}

std::string sampleSetCsv(std::size_t lines) {
    std::string text = "Set;Merk;Items;Model;Locatie;Email;Getagd";
    for (std::size_t i = 0; i < lines; ++i) {
        text += "\n" + std::to_string(i + 1) + ";" + pick(kBrands, i) + ";";
        for (std::size_t item = 0; item < 5; ++item)
            text += (item > 0 ? ", " : "") + pick(kGarments, i + item) + "/" + pick(kColors, i / 3 + item);
        text += ";" + pick(kModels, i) + ";Studio A;;0";
    }
    return text;
}

std::string sampleCatalogCsv(std::size_t products) {
    std::string text = "Naam;Kleuren;Merk";
    for (std::size_t i = 0; i < products; ++i)
        text += "\n" + pick(kGarments, i * 7) + " " + std::to_string(i * 7919 % products) + ";" +
                pick(kColors, i) + ", " + pick(kColors, i + 2) + ";" + pick(kBrands, i);
    return text;
}

} // namespace vantor::bench
