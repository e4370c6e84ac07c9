#include "store/shoot_manager.h"

#include "formats/shoot_file.h"
#include "model/shoot_json.h"

#include <algorithm>
#include <utility>

namespace vantor {
namespace {

template <typename Records>
auto withId(Records& records, Uuid id) {
    return std::find_if(records.begin(), records.end(), [&](const auto& each) { return each.id == id; });
}

} // namespace

ShootManager::ShootManager(StoreFile* file, Clock clock) : m_file(file), m_clock(std::move(clock)) {}

const Shoot* ShootManager::shoot(Uuid id) const {
    const auto found = withId(m_shoots, id);
    return found == m_shoots.end() ? nullptr : &*found;
}

const Shoot* ShootManager::activeShoot() const {
    return m_activeShootId ? shoot(*m_activeShootId) : nullptr;
}

const SetData* ShootManager::activeSet() const {
    const auto* const active = activeShoot();
    if (active == nullptr || !m_activeSetId)
        return nullptr;
    const auto found = withId(active->sets, *m_activeSetId);
    return found == active->sets.end() ? nullptr : &*found;
}

void ShootManager::load() {
    if (m_file == nullptr)
        return;
    m_file->load([this](std::string_view bytes) {
        auto shoots = readShoots(bytes, DateForm::SecondsSinceReference);
        if (!shoots)
            return false;
        announce(Change::Shoots);
        m_shoots = *std::move(shoots);
        setActiveShootId(m_shoots.empty() ? std::nullopt : std::optional(m_shoots.front().id));
        return true;
    });
}

void ShootManager::save() {
    if (m_file == nullptr)
        return;
    JsonWriter out(JsonWriter::Layout::Compact);
    writeShoots(out, m_shoots, DateForm::SecondsSinceReference);
    m_file->save(out.written());
}

void ShootManager::insertShoot(Shoot shoot) {
    announce(Change::Shoots);
    m_shoots.insert(m_shoots.begin(), std::move(shoot));
}

void ShootManager::setActiveShootId(std::optional<Uuid> id) {
    announce(Change::ActiveShootId);
    m_activeShootId = id;
}

void ShootManager::setActiveSetId(std::optional<Uuid> id) {
    announce(Change::ActiveSetId);
    m_activeSetId = id;
}

void ShootManager::addSet(Uuid to, SetData setData) {
    if (shoot(to) == nullptr)
        return;
    announce(Change::Shoots);
    withId(m_shoots, to)->sets.push_front(std::move(setData));
    save();
}

void ShootManager::updateSet(Uuid id, SetData updated) {
    for (auto& each : m_shoots) {
        const auto found = withId(each.sets, id);
        if (found == each.sets.end())
            continue;
        announce(Change::Shoots);
        *found = std::move(updated);
        save();
        return;
    }
}

void ShootManager::deleteSet(Uuid id) {
    announce(Change::Shoots);
    for (auto& each : m_shoots)
        each.sets.removeIf([&](const auto& set) { return set.id == id; });
    if (m_activeSetId == id)
        setActiveSetId(std::nullopt);
    save();
}

void ShootManager::deleteShoot(Uuid id) {
    announce(Change::Shoots);
    std::erase_if(m_shoots, [&](const auto& each) { return each.id == id; });
    if (m_activeShootId == id)
        setActiveShootId(m_shoots.empty() ? std::nullopt : std::optional(m_shoots.front().id));
    save();
}

void ShootManager::activateSet(Uuid id) {
    setActiveSetId(id);
    const auto holder = std::find_if(m_shoots.begin(), m_shoots.end(), [&](const auto& each) {
        return withId(each.sets, id) != each.sets.end();
    });
    if (holder == m_shoots.end())
        return;
    setActiveShootId(holder->id);
    announce(Change::Shoots);
    holder->activationLog.push_back({id, m_clock()});
    save();
}

std::optional<SetData> ShootManager::handleScanInput(std::string_view text) {
    auto parsed = SetData::parse(text, m_clock());
    if (!parsed)
        return std::nullopt;
    if (const auto* const active = activeShoot()) {
        const auto known = std::find_if(active->sets.begin(), active->sets.end(), [&](const auto& each) {
            return each.setNumber == parsed->setNumber && each.brand == parsed->brand;
        });
        if (known != active->sets.end()) {
            auto found = *known;
            activateSet(found.id);
            return found;
        }
    }
    if (m_activeShootId) {
        addSet(*m_activeShootId, *parsed);
        activateSet(parsed->id);
    }
    return parsed;
}

std::optional<std::string> ShootManager::exportJSON(Uuid shootId) const {
    const auto* const found = shoot(shootId);
    return found != nullptr ? std::optional(writeShootFile(*found)) : std::nullopt;
}

std::optional<Shoot> ShootManager::importShoot(std::string_view from) {
    auto read = readShootFile(from);
    if (!read)
        return std::nullopt;
    return importShoot(std::move(*read));
}

Shoot ShootManager::importShoot(Shoot read) {
    auto added =
        Shoot::make(std::move(read.name), std::move(read.location), std::move(read.client), m_clock());
    added.sets = std::move(read.sets);
    for (auto& set : added.sets)
        set.id = Uuid::random();
    insertShoot(added);
    setActiveShootId(added.id);
    save();
    return added;
}

int ShootManager::importCSV(std::string_view text, Uuid shootId) {
    return addImported(readSetCSV(text, m_clock()), shootId);
}

int ShootManager::addImported(SetsOfCSV read, Uuid shootId) {
    const auto count = static_cast<int>(read.sets.size());
    if (shoot(shootId) != nullptr && count > 0) {
        announce(Change::Shoots);
        auto& sets = withId(m_shoots, shootId)->sets;
        // Where memory runs out, none of them is added rather than some.
        sets.reserveFront(read.sets.size());
        for (auto& set : read.sets)
            sets.push_front(std::move(set));
    }
    if (read.hasLines)
        save();
    return count;
}

std::string ShootManager::exportCSV(Uuid shootId) const {
    const auto* const found = shoot(shootId);
    return found != nullptr ? writeSetCSV(*found) : std::string();
}

} // namespace vantor
