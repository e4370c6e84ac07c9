// FirstProcess: one process owns the data; a later start hands its files to it and leaves.
//
// How a hand-over goes: the later start sends its message, the owner answers that it is ready, the start says go, and
// only then are the files opened. The owner shows that it is alive until they are, and says so in the end. Thus what
// was given up is not opened later: right before a shoot is stored, the owner looks whether the start still waits.
// A start whose owner ends under way begins again, with the next owner or as the owner itself; a shoot that was
// stored before the owner could say so is recognised then.
//
// Places may lie where everybody can write. Only a process of the same user is asked, whoever else listens there.
#pragma once

#include "app/hand_over_message.h"
#include "base/timestamp.h"
#include "platform/process_lock.h"
#include "ui/main/handed_files.h"

#include <QLocalServer>
#include <QString>
#include <QStringList>
#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

class QLocalSocket;

namespace vantor {

class FirstProcess {
public:
    enum class Role {
        // This process owns the data, and already listens.
        Owner,
        // Another process owns it, and has opened the files.
        HandedOver,
        // Another process owns it, and does not react.
        Unanswered,
    };
    using OnFiles = std::function<void(ui::HandedFiles)>;

    static constexpr std::chrono::milliseconds kPatience{5000};

    // `places` are names for the owner's socket, the best first: the same for all starts that share their data,
    // and for no others. The owner tells the others through the lock which one it took. The lock outlives this.
    FirstProcess(ProcessLock& lock, QStringList places, std::chrono::milliseconds patience = kPatience);

    // Finds out who owns the data, and hands the files over unless it is this process. Waits for an owner that does
    // not react, all in all for `patience` since its last sign of life. Without a lock the data's owner is whoever
    // listens. Needs no event loop and no window.
    [[nodiscard]] Role begin(const std::vector<std::filesystem::path>& files);

    // When an owner that has ended since was told to open this start's files.
    [[nodiscard]] std::optional<Timestamp> handedBeforeAt() const { return m_handedBeforeAt; }

    // Takes from now on what later starts hand over, also what came since begin().
    void serve(OnFiles onFiles);

private:
    enum class Talk { Done, Lost, Quiet };
    class Patience;

    [[nodiscard]] QStringList placesToTry() const;
    [[nodiscard]] Talk handOver(const std::vector<std::filesystem::path>& files, Patience& patience);
    [[nodiscard]] Talk talk(QLocalSocket& socket, const std::vector<std::filesystem::path>& files,
                            Patience& patience);
    void listen();
    void welcome(QLocalSocket* socket);

    ProcessLock& m_lock;
    QStringList m_places;
    std::chrono::milliseconds m_patience;
    std::optional<Timestamp> m_handedBeforeAt;
    OnFiles m_onFiles;
    QLocalServer m_server;
};

} // namespace vantor
