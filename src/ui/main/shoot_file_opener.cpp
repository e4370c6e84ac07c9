#include "ui/main/shoot_file_opener.h"

#include "formats/shoot_file.h"
#include "model/record_differences.h"
#include "model/shoot_fields.h"
#include "ui/frame/beside_window.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace vantor::ui {
namespace {

// Larger files are no shoot files.
constexpr std::uint64_t kMostBytes = std::uint64_t{64} << 20U;

// Whether the one is what adding the other has made: all but what a shoot and its sets are given anew, and what only
// happens to them later.
bool isAddedFrom(const Shoot& stored, const Shoot& file) {
    const auto sameSet = [](const SetData& a, const SetData& b) {
        return agreeExceptIn({"id", "timestamp", "taggedCount"}, a, b);
    };
    return agreeExceptIn({"id", "date", "sets", "watchFolderPath", "activationLog"}, stored, file) &&
           std::equal(stored.sets.begin(), stored.sets.end(), file.sets.begin(), file.sets.end(), sameSet);
}

} // namespace

struct ShootFileOpener::Batch {
    HandedFiles handed;
    bool tellsUnreadable;
    std::size_t next = 0;
    // Of what an earlier process may have stored of these files.
    std::vector<Uuid> storedBefore;
};

struct ShootFileOpener::Read {
    std::filesystem::path path;
    // Why there is nothing to read a shoot from.
    std::optional<FileStore::ReadFailure> failure;
    std::optional<Shoot> shoot;
};

ShootFileOpener::ShootFileOpener(const FileStore& files, ShootManager& manager,
                                 std::function<void()> onNoShoot, OnUnreadable onUnreadable)
    : m_files(files),
      m_manager(manager),
      m_onNoShoot(std::move(onNoShoot)),
      m_onUnreadable(std::move(onUnreadable)) {}

ShootFileOpener::~ShootFileOpener() {
    while (!m_batches.empty())
        finish(*m_batches.front(), false);
}

void ShootFileOpener::open(HandedFiles handed) {
    start(std::move(handed), true);
}

void ShootFileOpener::openChosen(std::filesystem::path file) {
    start({{std::move(file)}, {}, {}, {}}, false);
}

void ShootFileOpener::start(HandedFiles handed, bool tellsUnreadable) {
    auto& batch = *m_batches.emplace_back(new Batch{std::move(handed), tellsUnreadable, 0, {}});
    if (const auto since = batch.handed.handedBeforeAt) {
        for (const auto& shoot : m_manager.shoots()) {
            if (shoot.date.secondsSinceReference >= since->secondsSinceReference)
                batch.storedBefore.push_back(shoot.id);
        }
    }
    readNext(batch);
}

void ShootFileOpener::readNext(Batch& batch) {
    if (batch.next == batch.handed.files.size())
        return finish(batch, true);
    readBesideWindow<Read>(
        this,
        [&files = m_files, path = batch.handed.files[batch.next++]]() -> Read {
            const auto read = files.read(path, kMostBytes);
            if (!read.bytes)
                return {path, read.failure, std::nullopt};
            return {path, std::nullopt, readShootFile(*read.bytes)};
        },
        [this, &batch](Read& read) { take(batch, read); });
}

void ShootFileOpener::take(Batch& batch, Read& read) {
    if (batch.handed.isWanted && !batch.handed.isWanted())
        return finish(batch, false);
    if (read.shoot) {
        // Two of the same file are two shoots, so that each that is stored answers for one of them.
        const auto stored = std::ranges::find_if(batch.storedBefore, [&](const Uuid& id) {
            const auto& shoots = m_manager.shoots();
            const auto shoot = std::ranges::find(shoots, id, &Shoot::id);
            return shoot != shoots.end() && isAddedFrom(*shoot, *read.shoot);
        });
        if (stored != batch.storedBefore.end())
            batch.storedBefore.erase(stored);
        else
            m_manager.importShoot(std::move(*read.shoot));
    } else if (read.failure && !batch.tellsUnreadable) {
        m_onUnreadable(read.path, *read.failure);
    } else {
        m_onNoShoot();
    }
    readNext(batch);
}

void ShootFileOpener::finish(Batch& batch, bool opened) {
    const auto whenDone = std::move(batch.handed.whenDone);
    std::erase_if(m_batches, [&](const auto& each) { return each.get() == &batch; });
    if (whenDone)
        whenDone(opened);
}

} // namespace vantor::ui
