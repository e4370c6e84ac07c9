// Shoot and what it holds: SetData, SetItem and SetActivation.
//
// - Plain records, copied by value. Two of them are the same one when their ids are; equal are those whose contents are.
// - Texts are kept exactly as the user typed them and may be empty.
// - Index 0 of a list of sets is shown first. New sets go to the front, so the list is cheap to grow there.
#pragma once

#include "base/double_ended_vector.h"
#include "base/timestamp.h"
#include "base/uuid.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {

// One garment of a set, such as "coated pants" in "brown".
struct SetItem {
    Uuid id;
    std::string name;
    std::string color;

    [[nodiscard]] static SetItem make(std::string name, std::string color);

    friend bool operator==(const SetItem&, const SetItem&) = default;
};

// One outfit to be photographed: what a QR card is printed for.
struct SetData {
    Uuid id;
    // As written by the user: "1", "12b".
    std::string setNumber;
    std::string brand;
    std::vector<SetItem> items;
    std::string model;
    // The place within the shoot.
    std::string location;
    // When the set was made.
    Timestamp timestamp;
    // Photos tagged with this set, as told by whoever tagged them; never counted here.
    std::int64_t taggedCount = 0;
    std::string email;

    // An empty set with a fresh id.
    [[nodiscard]] static SetData make(Timestamp now);

    // Reads the text of a card: a line a field, TAG:value, the tag in any case. Lines that say nothing known
    // are passed over, the last of equal tags holds. Absent when the text names neither a number nor a brand.
    [[nodiscard]] static std::optional<SetData> parse(std::string_view text, Timestamp now);

    // The text of this set's card: SET, BRAND, ITEM (one a garment), MODEL, LOCATION, EMAIL, joined by line
    // feeds; empty fields are left out. A line break inside a value is written as a space.
    [[nodiscard]] std::string toQRText() const;

    // "Set 12 — Marvis": how the set is named everywhere.
    [[nodiscard]] std::string headline() const;

    // "coated pants brown, sweater blue navy": its garments.
    [[nodiscard]] std::string description() const;

    friend bool operator==(const SetData&, const SetData&) = default;
};

// Sets in their order. The newest come first, so they are added at the front.
using SetList = DoubleEndedVector<SetData>;

// Says when which set was made the active one. The set may have been deleted since.
struct SetActivation {
    Uuid setId;
    Timestamp activatedAt;

    friend bool operator==(const SetActivation&, const SetActivation&) = default;
};

// One photo shoot with its sets.
struct Shoot {
    Uuid id;
    std::string name;
    std::string location;
    std::string client;
    Timestamp date;
    SetList sets;
    // A folder that another program watches; carried along, never used here.
    std::optional<std::string> watchFolderPath;
    // Oldest first.
    std::vector<SetActivation> activationLog;

    // A shoot without sets, with a fresh id.
    [[nodiscard]] static Shoot make(std::string name, std::string location, std::string client,
                                    Timestamp now);

    friend bool operator==(const Shoot&, const Shoot&) = default;
};

// A garment as (name, colour) is written "name/colour", without a colour as its name alone.
[[nodiscard]] std::string slashed(const SetItem& item);

// Reads "name/colour": split at the first slash, empty parts dropped, so that "/red" is a garment named "red".
// Absent when nothing but slashes and blanks is there.
[[nodiscard]] std::optional<SetItem> parseSlashedItem(std::string_view text);

} // namespace vantor
