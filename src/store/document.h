// Document: owns a user's library, carries out every change of it, takes changes back, and keeps the stores' files.
//
// - A change is announced through willChange() before it takes effect, saved once, and told through didChange() once
//   all is as it says. Whoever hears of it may read, but not change.
// - Undo and redo walk the steps of both stores in the order in which they happened, the last kMostSteps of them.
//   Activating is no step. After undo and redo the shoot and set are active that were at that step, unless another
//   was made active since; what no longer exists is not.
// - What the scanner logged is never lost: a shoot that comes back, or comes in another's place, has every entry that it
//   ever had.
// - Nothing reports errors: what is in memory holds, and unsaved() tells what could not be written yet, and why.
// - Belongs to the user-interface thread.
#pragma once

#include "base/signal.h"
#include "base/timestamp.h"
#include "store/restore_points.h"
#include "store/store_file.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "edit/change.h"

namespace vantor {

// What a change is about.
enum class Aspect { Shoots, ActiveShootId, ActiveSetId, Products, Clients, Brands };

// What has changed, and by what.
struct Changed {
    enum class Cause { Performed, Undone, Redone, Activated, Loaded };
    Cause cause = Cause::Performed;
    // What a step is called, and whether the person is told of it; empty where it was none.
    std::string step;
    bool isTold = false;
    // Of an import: the lines that brought nothing.
    ImportReport leftOut;
    // In the order of the announcements; each once.
    std::vector<Aspect> aspects;
    // Whether shoots came or went.
    bool shootList = false;
    // The shoots that stand where they stood, but whose sets are others.
    std::vector<Uuid> shootsWithOtherSets;

    [[nodiscard]] bool isAbout(Aspect aspect) const;
};

class Document {
public:
    static constexpr std::size_t kMostSteps = 500;

    // An empty library. Without a file, that store is never read or written; without `points` no copies are kept. All
    // of them outlive it.
    explicit Document(StoreFile* shoots = nullptr, StoreFile* catalog = nullptr, Clock clock = Timestamp::now,
                      RestorePoints* points = nullptr);
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    [[nodiscard]] const Library& library() const { return m_library; }
    [[nodiscard]] Timestamp now() const { return m_clock(); }

    [[nodiscard]] Signal<Aspect>& willChange() { return m_willChange; }
    [[nodiscard]] Signal<const Changed&>& didChange() { return m_didChange; }

    // Carries the change out and saves what it touches. What can be taken back becomes the newest step, and what had been
    // undone is forgotten. `regardless` is announced, and its store saved, also when nothing of it changes.
    void perform(Change change, std::optional<Aspect> regardless = std::nullopt);

    // The newest step that can be taken back, told apart from every other; 0 when there is none.
    [[nodiscard]] std::uint64_t newestStep() const { return m_done.empty() ? 0 : m_done.back().id; }

    // Makes another shoot the active one, which is neither a step nor saved.
    void activateShoot(std::optional<Uuid> id);

    [[nodiscard]] bool canUndo() const { return !m_done.empty(); }
    [[nodiscard]] bool canRedo() const { return !m_undone.empty(); }
    // What the next undo takes back, or redo does again; empty when there is none.
    [[nodiscard]] std::string undoName() const;
    [[nodiscard]] std::string redoName() const;
    void undo();
    void redo();

    // Replace a store's records by those of its file; one that is missing or unreadable changes nothing. Steps from
    // before are forgotten.
    void loadShoots();
    void loadCatalog();

    // Loads both, unless that was done before; says whether it did.
    bool loadOnce();

    void saveShoots();
    void saveCatalog();

private:
    struct Step {
        Change change;
        ActiveIds before;
        ActiveIds after;
        std::uint64_t id;
    };

    [[nodiscard]] Change put(Change change, std::optional<Aspect> regardless, Changed& changed);
    void makeActive(const Change& change, Changed& changed);
    void makeActiveShoot(std::optional<Uuid> id, Changed& changed);
    void makeActiveSet(std::optional<Uuid> id, Changed& changed);
    void announce(Aspect aspect, Changed& changed);
    void takeStep(std::deque<Step>& from, std::deque<Step>& to, bool isUndo);
    // What was logged for the shoots that went with a change, for those that came.
    void keepLogs(const Change& inverse);
    void forgetSteps();
    void saveWhat(bool shoots, bool catalog);

    void keepRestorePoint(const Change& change);

    StoreFile* m_shootsFile;
    StoreFile* m_catalogFile;
    Clock m_clock;
    RestorePoints* m_points;
    bool m_isLoaded = false;
    Library m_library;
    std::deque<Step> m_done;
    std::deque<Step> m_undone;
    std::uint64_t m_stepsMade = 0;
    std::unordered_map<Uuid, std::vector<SetActivation>> m_logsOfGone;
    Signal<Aspect> m_willChange;
    Signal<const Changed&> m_didChange;
};

} // namespace vantor
