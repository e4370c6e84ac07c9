#include "store/document.h"

#include "model/product_json.h"
#include "model/shoot_json.h"

#include <algorithm>
#include <utility>

#include "edit/activation_log.h"

namespace vantor {
namespace {

bool holdsSet(const Library& library, const Uuid& id) {
    return std::ranges::any_of(library.shoots, [&](const Shoot& shoot) {
        return std::ranges::find(shoot.sets, id, &SetData::id) != shoot.sets.end();
    });
}

// What of it still exists; where the shoot does not, the one at the front.
ActiveIds existing(ActiveIds wanted, const Library& library) {
    if (!wanted.shoot || library.shoot(*wanted.shoot) == nullptr)
        wanted.shoot = library.shoots.empty() ? std::nullopt : std::optional(library.shoots.front().id);
    if (wanted.set && !holdsSet(library, *wanted.set))
        wanted.set.reset();
    return wanted;
}

} // namespace

bool Changed::isAbout(Aspect aspect) const {
    return std::ranges::find(aspects, aspect) != aspects.end();
}

Document::Document(StoreFile* shoots, StoreFile* catalog, Clock clock, RestorePoints* points)
    : m_shootsFile(shoots),
      m_catalogFile(catalog),
      m_clock(std::move(clock)),
      m_points(points) {}

void Document::keepRestorePoint(const Change& change) {
    if (m_points == nullptr || !change.isStep())
        return;
    if (change.needsRestorePoint)
        m_points->keep(m_library, change.name);
    else if (m_points->isFirstOfDay())
        m_points->keep(m_library, {});
}

void Document::announce(Aspect aspect, Changed& changed) {
    if (!changed.isAbout(aspect))
        changed.aspects.push_back(aspect);
    m_willChange.emit(aspect);
}

void Document::makeActiveShoot(std::optional<Uuid> id, Changed& changed) {
    announce(Aspect::ActiveShootId, changed);
    m_library.active.shoot = id;
}

void Document::makeActiveSet(std::optional<Uuid> id, Changed& changed) {
    announce(Aspect::ActiveSetId, changed);
    m_library.active.set = id;
}

void Document::makeActive(const Change& change, Changed& changed) {
    if (change.activeSet)
        makeActiveSet(*change.activeSet, changed);
    if (change.activeShoot)
        makeActiveShoot(*change.activeShoot, changed);
}

Change Document::put(Change change, std::optional<Aspect> regardless, Changed& changed) {
    const auto announceIf = [&](bool isTouched, Aspect aspect) {
        if (isTouched || regardless == aspect)
            announce(aspect, changed);
    };
    announceIf(change.touchesShoots() || change.logged, Aspect::Shoots);
    announceIf(!change.products.isEmpty(), Aspect::Products);
    announceIf(!change.clients.isEmpty(), Aspect::Clients);
    announceIf(!change.brands.isEmpty(), Aspect::Brands);
    changed.shootList = !change.shoots.isEmpty();
    const auto noteShoots = [&](const Change& made) {
        for (const auto& each : made.inShoots)
            changed.shootsWithOtherSets.push_back(m_library.shoots[each.shoot].id);
    };
    // Their places are those of the earlier list.
    if (!change.isInverse)
        noteShoots(change);
    auto inverse = apply(m_library, std::move(change));
    if (!inverse.isInverse)
        noteShoots(inverse);
    keepLogs(inverse);
    return inverse;
}

void Document::keepLogs(const Change& inverse) {
    for (const auto& put : inverse.shoots.put) {
        if (put.from)
            continue;
        auto& kept = m_logsOfGone[put.element.id];
        kept = mergedLog(std::move(kept), put.element.activationLog);
    }
    for (const auto place : inverse.shoots.take) {
        auto& shoot = m_library.shoots[place];
        if (const auto kept = m_logsOfGone.find(shoot.id); kept != m_logsOfGone.end())
            shoot.activationLog = mergedLog(std::move(shoot.activationLog), kept->second);
    }
}

void Document::perform(Change change, std::optional<Aspect> regardless) {
    keepRestorePoint(change);
    Changed changed;
    changed.leftOut = std::exchange(change.leftOut, {});
    const auto before = m_library.active;
    const bool isStep = change.isStep();
    const bool shoots = change.touchesShoots() || change.logged || regardless == Aspect::Shoots;
    const bool catalog = change.touchesCatalog() || (regardless && regardless != Aspect::Shoots);
    // A set that is activated is the active one before its log says so.
    if (!isStep)
        makeActive(change, changed);
    auto inverse = put(std::move(change), regardless, changed);
    if (isStep) {
        makeActive(inverse, changed);
        changed.step = inverse.name;
        changed.isTold = inverse.isTold;
        m_done.push_back({std::move(inverse), before, m_library.active, ++m_stepsMade});
        if (m_done.size() > kMostSteps)
            m_done.pop_front();
        m_undone.clear();
    }
    saveWhat(shoots, catalog);
    m_didChange.emit(changed);
}

void Document::activateShoot(std::optional<Uuid> id) {
    Changed changed;
    changed.cause = Changed::Cause::Activated;
    makeActiveShoot(id, changed);
    m_didChange.emit(changed);
}

std::string Document::undoName() const {
    return canUndo() ? m_done.back().change.name : std::string();
}

std::string Document::redoName() const {
    return canRedo() ? m_undone.back().change.name : std::string();
}

void Document::undo() {
    if (canUndo())
        takeStep(m_done, m_undone, true);
}

void Document::redo() {
    if (canRedo())
        takeStep(m_undone, m_done, false);
}

void Document::takeStep(std::deque<Step>& from, std::deque<Step>& to, bool isUndo) {
    auto step = std::move(from.back());
    from.pop_back();
    Changed changed;
    changed.cause = isUndo ? Changed::Cause::Undone : Changed::Cause::Redone;
    changed.step = step.change.name;
    changed.isTold = true;
    const bool shoots = step.change.touchesShoots();
    const bool catalog = step.change.touchesCatalog();
    const auto& left = isUndo ? step.after : step.before;
    const auto& wanted = isUndo ? step.before : step.after;
    const bool isAsLeft = m_library.active == left;
    step.change = put(std::move(step.change), std::nullopt, changed);
    const auto active = existing(isAsLeft ? wanted : m_library.active, m_library);
    if (active.set != m_library.active.set)
        makeActiveSet(active.set, changed);
    if (active.shoot != m_library.active.shoot)
        makeActiveShoot(active.shoot, changed);
    to.push_back(std::move(step));
    saveWhat(shoots, catalog);
    m_didChange.emit(changed);
}

void Document::forgetSteps() {
    m_done.clear();
    m_undone.clear();
    m_logsOfGone.clear();
}

void Document::loadShoots() {
    if (m_shootsFile == nullptr)
        return;
    m_shootsFile->load([this](std::string_view bytes) {
        auto shoots = readShoots(bytes, DateForm::SecondsSinceReference);
        if (!shoots)
            return false;
        Changed changed;
        changed.cause = Changed::Cause::Loaded;
        changed.shootList = true;
        forgetSteps();
        announce(Aspect::Shoots, changed);
        m_library.shoots = *std::move(shoots);
        const auto first =
            m_library.shoots.empty() ? std::nullopt : std::optional(m_library.shoots.front().id);
        makeActiveShoot(first, changed);
        m_didChange.emit(changed);
        return true;
    });
}

void Document::loadCatalog() {
    if (m_catalogFile == nullptr)
        return;
    m_catalogFile->load([this](std::string_view bytes) {
        auto catalog = readCatalog(bytes);
        auto products = catalog ? std::nullopt : readProducts(bytes);
        if (!catalog && !products)
            return false;
        Changed changed;
        changed.cause = Changed::Cause::Loaded;
        forgetSteps();
        announce(Aspect::Products, changed);
        if (catalog) {
            announce(Aspect::Clients, changed);
            announce(Aspect::Brands, changed);
            m_library.catalog = *std::move(catalog);
        } else {
            m_library.catalog.products = *std::move(products);
        }
        m_didChange.emit(changed);
        return true;
    });
}

bool Document::loadOnce() {
    if (std::exchange(m_isLoaded, true))
        return false;
    loadShoots();
    loadCatalog();
    return true;
}

void Document::saveWhat(bool shoots, bool catalog) {
    if (shoots)
        saveShoots();
    if (catalog)
        saveCatalog();
}

void Document::saveShoots() {
    if (m_shootsFile == nullptr)
        return;
    JsonWriter out(JsonWriter::Layout::Compact);
    writeShoots(out, m_library.shoots, DateForm::SecondsSinceReference);
    m_shootsFile->save(out.written());
}

void Document::saveCatalog() {
    if (m_catalogFile == nullptr)
        return;
    JsonWriter out(JsonWriter::Layout::Compact);
    writeCatalog(out, m_library.catalog);
    m_catalogFile->save(out.written());
}

} // namespace vantor
