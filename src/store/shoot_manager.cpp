#include "store/shoot_manager.h"

#include "formats/shoot_file.h"

#include <utility>

#include "edit/shoot_edits.h"

namespace vantor {

void ShootManager::addShoot(Shoot shoot) {
    m_document.perform(vantor::addShoot(std::move(shoot)));
}

void ShootManager::setActiveShootId(std::optional<Uuid> id) {
    m_document.activateShoot(id);
}

void ShootManager::addSet(Uuid to, SetData setData) {
    if (auto change = vantor::addSet(library(), to, std::move(setData)))
        m_document.perform(*std::move(change));
}

void ShootManager::updateSet(Uuid id, SetData updated) {
    if (auto change = vantor::updateSet(library(), id, std::move(updated)))
        m_document.perform(*std::move(change), Aspect::Shoots);
}

void ShootManager::deleteSet(Uuid id) {
    m_document.perform(vantor::deleteSet(library(), id), Aspect::Shoots);
}

void ShootManager::deleteShoot(Uuid id) {
    m_document.perform(vantor::deleteShoot(library(), id), Aspect::Shoots);
}

void ShootManager::activateSet(Uuid id) {
    m_document.perform(vantor::activateSet(library(), id, m_document.now()));
}

std::optional<SetData> ShootManager::handleScanInput(std::string_view text) {
    auto scanned = scan(library(), text, m_document.now());
    if (!scanned)
        return std::nullopt;
    if (scanned->change)
        m_document.perform(*std::move(scanned->change));
    return std::move(scanned->set);
}

std::optional<std::string> ShootManager::exportJSON(Uuid shootId) const {
    const auto* const found = library().shoot(shootId);
    return found != nullptr ? std::optional(writeShootFile(*found)) : std::nullopt;
}

std::optional<Shoot> ShootManager::importShoot(std::string_view from) {
    auto read = readShootFile(from);
    if (!read)
        return std::nullopt;
    return importShoot(std::move(*read));
}

Shoot ShootManager::importShoot(Shoot read) {
    m_document.perform(vantor::importShoot(std::move(read), m_document.now()));
    return shoots().front();
}

int ShootManager::importCSV(std::string_view text, Uuid shootId) {
    return addImported(readSetCSV(text, m_document.now()), shootId);
}

int ShootManager::addImported(SetsOfCSV read, Uuid shootId) {
    const auto count = static_cast<int>(read.sets.size());
    if (read.hasLines)
        m_document.perform(importSets(library(), shootId, std::move(read.sets), std::move(read.leftOut)),
                           Aspect::Shoots);
    return count;
}

std::string ShootManager::exportCSV(Uuid shootId) const {
    const auto* const found = library().shoot(shootId);
    return found != nullptr ? writeSetCSV(*found) : std::string();
}

} // namespace vantor
