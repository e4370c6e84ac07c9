// The screens that the tests of the windows run on, side by side. Programs start on the first.
#pragma once

#include <QByteArray>
#include <QSize>
#include <array>

namespace vantor::testing {

inline constexpr std::array kScreens{QSize(1920, 1080), QSize(1366, 768),
                                     // 1920 × 1080 at 150 % too.
                                     QSize(1280, 720),
                                     // 1920 × 1080 at 175 %.
                                     QSize(1097, 617), QSize(1024, 600),
                                     // 1920 × 1080 at 200 %.
                                     QSize(960, 540)};

// As the platform that shows nothing reads them.
[[nodiscard]] inline QByteArray screensAsJson() {
    QByteArray list;
    int x = 0;
    for (const auto& size : kScreens) {
        list += (list.isEmpty() ? "" : ",") + QByteArray(R"({"name":"s)") + QByteArray::number(x) +
                R"(","x":)" + QByteArray::number(x) + R"(,"y":0,"width":)" +
                QByteArray::number(size.width()) + R"(,"height":)" + QByteArray::number(size.height()) +
                R"(,"logicalDpi":96,"logicalBaseDpi":96,"dpr":1})";
        x += size.width();
    }
    return R"({"screens":[)" + list + "]}";
}

} // namespace vantor::testing
