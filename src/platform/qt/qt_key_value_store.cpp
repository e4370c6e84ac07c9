#include "platform/qt/qt_key_value_store.h"

#include <QFileInfo>

namespace vantor {
namespace {

// Settings files turn plain numbers into texts and cut dates to milliseconds; a map keeps its values' types.
const QString kDateTag = QStringLiteral("secondsSinceReference");

QString toQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

QtKeyValueStore::QtKeyValueStore(std::string_view organisation, std::string_view application)
    : m_settings(QSettings::NativeFormat, QSettings::UserScope, toQt(organisation), toQt(application)) {
    m_settings.setFallbacksEnabled(false);
}

QtKeyValueStore::QtKeyValueStore(const std::filesystem::path& file)
    : m_settings(QFileInfo(file).filePath(), QSettings::IniFormat) {}

std::optional<std::string> QtKeyValueStore::text(std::string_view key) const {
    const auto value = m_settings.value(toQt(key));
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    return value.toString().toStdString();
}

std::optional<Timestamp> QtKeyValueStore::date(std::string_view key) const {
    const auto seconds = m_settings.value(toQt(key)).toMap().value(kDateTag);
    if (seconds.typeId() != QMetaType::Double)
        return std::nullopt;
    return Timestamp{seconds.toDouble()};
}

void QtKeyValueStore::setText(std::string_view key, std::string_view value) {
    m_settings.setValue(toQt(key), toQt(value));
}

void QtKeyValueStore::setDate(std::string_view key, Timestamp value) {
    m_settings.setValue(toQt(key), QVariantMap{{kDateTag, value.secondsSinceReference}});
}

void QtKeyValueStore::remove(std::string_view key) {
    m_settings.remove(toQt(key));
}

} // namespace vantor
