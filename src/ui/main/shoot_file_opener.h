// ShootFileOpener: adds the shoots of files to the store. Files are read and understood beside the window, at most
// 64 MiB of a regular file each; only the finished shoot goes into the store.
//
// - The files of one call are opened in their order; another call's files do not wait for them.
// - What is still unread when the opener goes is given up.
// - Borrows the store; belongs to the user-interface thread. The file store outlives every read that it began, which
//   may be later than the opener.
#pragma once

#include "platform/file_store.h"
#include "store/shoot_manager.h"
#include "ui/main/handed_files.h"

#include <QObject>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace vantor::ui {

class ShootFileOpener : public QObject {
public:
    using OnUnreadable = std::function<void(const std::filesystem::path& file, FileStore::ReadFailure why)>;

    // `onNoShoot` says that a file was none that can be opened, `onUnreadable` that one the user chose cannot be read.
    ShootFileOpener(const FileStore& files, ShootManager& manager, std::function<void()> onNoShoot,
                    OnUnreadable onUnreadable);
    ~ShootFileOpener() override;

    void open(HandedFiles handed);
    // The same for a file that the user chose.
    void openChosen(std::filesystem::path file);

private:
    struct Batch;
    struct Read;

    void start(HandedFiles handed, bool tellsUnreadable);
    void readNext(Batch& batch);
    void take(Batch& batch, Read& read);
    void finish(Batch& batch, bool opened);

    const FileStore& m_files;
    ShootManager& m_manager;
    std::function<void()> m_onNoShoot;
    OnUnreadable m_onUnreadable;
    std::vector<std::unique_ptr<Batch>> m_batches;
};

} // namespace vantor::ui
