// FirstProcess: one process owns the data; a later start hands its files to it and leaves.
#pragma once

#include <QLocalServer>
#include <QString>
#include <filesystem>
#include <functional>
#include <vector>

namespace vantor {

class FirstProcess {
public:
    using Files = std::vector<std::filesystem::path>;

    // `name` is the same for all starts that share their data, and for no others.
    explicit FirstProcess(const QString& name);

    // Hands the files to the process that came first, which comes to the front. False when there is none.
    [[nodiscard]] bool handOver(const Files& files) const;

    // Takes from now on what later starts hand over.
    void listen(std::function<void(const Files&)> onFiles);

private:
    QString m_name;
    QLocalServer m_server;
};

} // namespace vantor
