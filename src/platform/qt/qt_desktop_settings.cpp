#include "platform/qt/qt_desktop_settings.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QTimer>
#include <cmath>
#include <optional>

namespace vantor {
namespace {

using ColorScheme = DesktopLook::ColorScheme;

constexpr QLatin1String kGroup("org.freedesktop.appearance");
constexpr QLatin1String kRead("ReadOne");
// Portals of a few years ago only have this one.
constexpr QLatin1String kOldRead("Read");

std::optional<unsigned> number(const QVariant& value) {
    return value.typeId() == QMetaType::UInt ? std::optional(value.toUInt()) : std::nullopt;
}

ColorScheme colorScheme(const QVariant& value) {
    const auto told = number(value);
    if (told == 1U)
        return ColorScheme::Dark;
    return told == 2U ? ColorScheme::Light : ColorScheme::Unknown;
}

// Three parts from 0 to 1. Any other number stands for no accent.
std::optional<Rgb> accent(const QVariant& value) {
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ddd)"))
        return std::nullopt;
    std::array<std::uint8_t, 3> parts{};
    argument.beginStructure();
    for (auto& part : parts) {
        double share = 0;
        argument >> share;
        if (!(share >= 0 && share <= 1))
            return std::nullopt;
        part = static_cast<std::uint8_t>(std::lround(share * 255));
    }
    return Rgb{parts[0], parts[1], parts[2]};
}

} // namespace

struct QtDesktopSettings::Setting {
    QLatin1String key;
    // An invalid value is none.
    void (*take)(const QVariant& value, DesktopLook& look);
};

const std::array<QtDesktopSettings::Setting, 4> QtDesktopSettings::kSettings{{
    {QLatin1String("color-scheme"),
     [](const QVariant& value, DesktopLook& look) { look.colorScheme = colorScheme(value); }},
    {QLatin1String("accent-color"),
     [](const QVariant& value, DesktopLook& look) { look.accent = accent(value); }},
    {QLatin1String("contrast"),
     [](const QVariant& value, DesktopLook& look) { look.highContrast = number(value) == 1U; }},
    {QLatin1String("reduced-motion"),
     [](const QVariant& value, DesktopLook& look) { look.reducedMotion = number(value) == 1U; }},
}};

QtDesktopSettings::QtDesktopSettings(const QDBusConnection& bus)
    : m_portal(bus),
      m_owner(m_portal.service(), bus, QDBusServiceWatcher::WatchForOwnerChange) {
    QObject::connect(&m_portal, &SettingsPortal::SettingChanged, &m_portal,
                     [this](const QString& group, const QString& key, const QDBusVariant& value) {
                         for (const auto& setting : kSettings) {
                             if (group == kGroup && key == setting.key)
                                 take(setting, value.variant());
                         }
                     });
    QObject::connect(&m_owner, &QDBusServiceWatcher::serviceOwnerChanged, &m_portal,
                     [this](const QString&, const QString&, const QString& newOwner) {
                         if (!newOwner.isEmpty())
                             askForAll();
                     });
    askForAll();
}

void QtDesktopSettings::awaitAnswers(std::chrono::milliseconds atMost) {
    if (m_unanswered == 0)
        return;
    QEventLoop loop;
    m_wait = &loop;
    QTimer::singleShot(atMost, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    m_wait = nullptr;
}

void QtDesktopSettings::askForAll() {
    for (const auto& setting : kSettings)
        ask(setting, kRead);
}

void QtDesktopSettings::ask(const Setting& setting, const QString& function) {
    // Nothing would answer at all.
    if (!m_portal.connection().isConnected())
        return;
    ++m_unanswered;
    // Belongs to the portal: an answer must not come to settings that are gone.
    auto* const call = new QDBusPendingCallWatcher(m_portal.read(function, kGroup, setting.key), &m_portal);
    QObject::connect(call, &QDBusPendingCallWatcher::finished, &m_portal, [this, &setting, function, call] {
        call->deleteLater();
        answered(setting, function, call->reply());
        if (--m_unanswered == 0 && m_wait != nullptr)
            m_wait->quit();
    });
}

void QtDesktopSettings::answered(const Setting& setting, const QString& function, const QDBusMessage& reply) {
    if (reply.type() == QDBusMessage::ReplyMessage)
        take(setting, reply.arguments().value(0));
    else if (reply.errorName() == QLatin1String("org.freedesktop.portal.Error.NotFound"))
        take(setting, {});
    else if (function == kRead && QDBusError(reply).type() == QDBusError::UnknownMethod)
        ask(setting, kOldRead);
    // Whatever else went wrong says nothing about the setting.
}

void QtDesktopSettings::take(const Setting& setting, QVariant value) {
    // The older function wraps its value once more.
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    const auto before = m_look;
    setting.take(value, m_look);
    if (m_look != before)
        didChange().emit();
}

} // namespace vantor
