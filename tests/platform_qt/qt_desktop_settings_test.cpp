// Against a portal of the test's own, on a bus of its own: the desktop that the tests run on has no say.

#include "platform/qt/qt_desktop_settings.h"
#include "tests/support/event_loop.h"

#include <gmock/gmock.h>
#include <sys/prctl.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <csignal>
#include <limits>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using namespace std::chrono_literals;
using enum DesktopLook::ColorScheme;
using testing::runUntil;
using Values = std::map<QString, QVariant>;

// Only ends what would hang.
constexpr auto kLongest = 2min;
const QString kGroup = QStringLiteral("org.freedesktop.appearance");
const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");

// Starts no services by itself, as a user's would.
class PrivateBus {
public:
    PrivateBus() {
        QFile file(m_folder.filePath(QStringLiteral("bus.conf")));
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write("<busconfig><type>session</type><listen>unix:dir=" + m_folder.path().toUtf8() +
                   "</listen><policy context='default'><allow send_destination='*'/><allow receive_type='*'/>"
                   "<allow own='*'/></policy></busconfig>");
        file.close();
        // However the tests end.
        m_daemon.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--config-file=") + file.fileName(), QStringLiteral("--print-address"),
                        QStringLiteral("--nofork"), QStringLiteral("--nopidfile")});
        EXPECT_TRUE(m_daemon.waitForReadyRead(-1)) << "no dbus-daemon";
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        m_daemon.kill();
        m_daemon.waitForFinished(-1);
    }

    [[nodiscard]] const QString& address() const { return m_address; }

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};

// For as long as it lives.
class Connection {
public:
    explicit Connection(const QString& address) : bus(QDBusConnection::connectToBus(address, nextName())) {
        EXPECT_TRUE(bus.isConnected()) << bus.lastError().message().toStdString();
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        const auto name = bus.name();
        // It is closed only where nobody else holds it.
        bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(name);
    }

    QDBusConnection bus;

private:
    static QString nextName() {
        static int count = 0;
        return QStringLiteral("test-%1").arg(++count);
    }
};

// A portal that does what the test wants of it.
class Portal final : public QDBusVirtualObject {
public:
    enum class Manner { New, Old, Silent, Broken };

    Portal(QDBusConnection bus, Values values, Manner manner = Manner::New)
        : m_bus(std::move(bus)),
          m_values(std::move(values)),
          m_manner(manner) {
        EXPECT_TRUE(m_bus.registerVirtualObject(kPath, this));
        EXPECT_TRUE(m_bus.registerService(kService));
    }
    Portal(const Portal&) = delete;
    Portal& operator=(const Portal&) = delete;
    ~Portal() override {
        m_bus.unregisterService(kService);
        m_bus.unregisterObject(kPath);
    }

    void set(const QString& key, const QVariant& value, const QString& group = kGroup) {
        auto message = QDBusMessage::createSignal(kPath, kInterface, QStringLiteral("SettingChanged"));
        message << group << key << QVariant::fromValue(QDBusVariant(value));
        m_bus.send(message);
    }
    // What was asked while it was silent.
    void answerAll() {
        for (const auto& question : std::exchange(m_questions, {}))
            m_bus.send(answer(question));
    }
    [[nodiscard]] int asked() const { return m_asked; }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& question, const QDBusConnection&) override {
        if (question.interface() != kInterface)
            return false;
        ++m_asked;
        m_questions.push_back(question);
        if (m_manner != Manner::Silent)
            answerAll();
        return true;
    }

private:
    QDBusMessage answer(const QDBusMessage& question) {
        const bool isOld = question.member() == QLatin1String("Read");
        if (m_manner == Manner::Broken)
            return question.createErrorReply(QDBusError::Failed, QStringLiteral("x"));
        if (isOld != (m_manner == Manner::Old))
            return question.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("x"));
        const auto found = m_values.find(question.arguments().value(1).toString());
        if (question.arguments().value(0) != kGroup || found == m_values.end())
            return question.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"),
                                             QStringLiteral("x"));
        if (!found->second.isValid())
            return question.createReply();
        const auto value = QVariant::fromValue(QDBusVariant(found->second));
        return question.createReply(isOld ? QVariant::fromValue(QDBusVariant(value)) : value);
    }

    QDBusConnection m_bus;
    Values m_values;
    Manner m_manner;
    int m_asked = 0;
    std::vector<QDBusMessage> m_questions;
};

template <typename... Parts>
QVariant structure(Parts... parts) {
    QDBusArgument argument;
    argument.beginStructure();
    (argument << ... << parts);
    argument.endStructure();
    return QVariant::fromValue(argument);
}

const QString kColorScheme = QStringLiteral("color-scheme");
const QString kAccent = QStringLiteral("accent-color");
const QString kContrast = QStringLiteral("contrast");
const QString kMotion = QStringLiteral("reduced-motion");
const DesktopLook kNothing;
const DesktopLook kDark{Dark, {}, false, false};
const DesktopLook kLight{Light, {}, false, false};

class QtDesktopSettingsTest : public ::testing::Test {
protected:
    PrivateBus bus;
    Connection own{bus.address()};
    Connection theirs{bus.address()};
};

TEST_F(QtDesktopSettingsTest, TellsWhatTheDesktopWants) {
    const auto accented = [](const Rgb& color) { return DesktopLook{Unknown, color, false, false}; };
    struct Case {
        Values told;
        DesktopLook look;
    };
    for (const auto& [told, look] : {
             Case{{}, kNothing},
             {{{kColorScheme, 0U}}, kNothing},
             {{{kColorScheme, 1U}}, kDark},
             {{{kColorScheme, 2U}}, kLight},
             {{{kColorScheme, 3U}}, kNothing},
             {{{kContrast, 1U}}, {Unknown, {}, true, false}},
             {{{kContrast, 0U}}, kNothing},
             {{{kMotion, 1U}}, {Unknown, {}, false, true}},
             {{{kMotion, 0U}}, kNothing},
             {{{kAccent, structure(1.0, 0.0, 0.5)}}, accented({255, 0, 128})},
             {{{kAccent, structure(0.0, 0.0, 0.0)}}, accented({0, 0, 0})},
             {{{kColorScheme, 2U}, {kContrast, 1U}, {kMotion, 1U}, {kAccent, structure(0.2, 0.4, 0.6)}},
              {Light, Rgb{51, 102, 153}, true, true}},
             // No accent.
             {{{kAccent, structure(1.001, 0.0, 0.0)}}, kNothing},
             {{{kAccent, structure(0.0, -0.001, 0.0)}}, kNothing},
             {{{kAccent, structure(0.0, 0.0, std::numeric_limits<double>::quiet_NaN())}}, kNothing},
             // Nothing that makes sense, beside something that does.
             {{{kColorScheme, QStringLiteral("1")}, {kContrast, 1}, {kMotion, true}}, kNothing},
             {{{kColorScheme, QVariant()}, {kContrast, structure(1U)}}, kNothing},
             {{{kColorScheme, 1U}, {kAccent, structure(0.1, 0.1)}}, kDark},
             {{{kColorScheme, 1U}, {kAccent, structure(1, 1, 1)}}, kDark},
             {{{kColorScheme, 1U}, {kAccent, QStringLiteral("#000000")}}, kDark},
             {{{kColorScheme, 1U}, {kAccent, QVariant::fromValue(QList<double>{0, 0, 0})}}, kDark},
         }) {
        for (const auto manner : {Portal::Manner::New, Portal::Manner::Old}) {
            const Portal portal(theirs.bus, told, manner);
            QtDesktopSettings settings(own.bus);
            settings.awaitAnswers(kLongest);
            EXPECT_EQ(settings.look(), look) << told.size() << ' ' << static_cast<int>(manner);
        }
    }
}

TEST_F(QtDesktopSettingsTest, FollowsEveryChange) {
    Portal portal(theirs.bus, {{kColorScheme, 2U}});
    QtDesktopSettings settings(own.bus);
    settings.awaitAnswers(kLongest);
    std::vector<DesktopLook> looks;
    const auto subscription = settings.didChange().connect([&] { looks.push_back(settings.look()); });
    portal.set(kColorScheme, 2U);
    portal.set(kColorScheme, 1U);
    portal.set(kColorScheme, 0U, QStringLiteral("org.gnome.desktop.interface"));
    portal.set(QStringLiteral("gtk-theme"), 2U);
    portal.set(kColorScheme, 2U);
    portal.set(kColorScheme, 1U);
    portal.set(kColorScheme, QStringLiteral("x"));
    portal.set(kAccent, structure(1.0, 1.0, 1.0));
    portal.set(kAccent, structure(2.0, 1.0, 1.0));
    portal.set(kContrast, 1U);
    portal.set(kMotion, 1U);
    const DesktopLook last{Unknown, {}, true, true};
    runUntil([&] { return settings.look() == last; });
    EXPECT_THAT(looks, ::testing::ElementsAre(kDark, kLight, kDark, kNothing,
                                              DesktopLook{Unknown, Rgb{255, 255, 255}, false, false},
                                              kNothing, DesktopLook{Unknown, {}, true, false}, last));
}

TEST_F(QtDesktopSettingsTest, KnowsNothingAndDoesNotWaitWhereNobodyAnswers) {
    QtDesktopSettings withoutBus(QDBusConnection(QStringLiteral("none")));
    withoutBus.awaitAnswers(kLongest);
    EXPECT_EQ(withoutBus.look(), kNothing);
    QtDesktopSettings withoutPortal(own.bus);
    withoutPortal.awaitAnswers(kLongest);
    EXPECT_EQ(withoutPortal.look(), kNothing);
}

TEST_F(QtDesktopSettingsTest, WaitsNoLongerThanToldAndTakesTheAnswerThatComesLate) {
    Portal portal(theirs.bus, {{kColorScheme, 1U}}, Portal::Manner::Silent);
    QtDesktopSettings settings(own.bus);
    {
        const QtDesktopSettings gone(own.bus);
        ASSERT_TRUE(runUntil([&] { return portal.asked() == 8; }));
    }
    settings.awaitAnswers(1ms);
    EXPECT_EQ(settings.look(), kNothing);
    portal.answerAll();
    EXPECT_TRUE(runUntil([&] { return settings.look() == kDark; }));
}

TEST_F(QtDesktopSettingsTest, AsksAPortalThatComesLaterAndKeepsWhatItSaidUntilAnotherSaysOtherwise) {
    const auto comes = [this](Portal::Manner manner, const Values& values) {
        return std::make_unique<Portal>(theirs.bus, values, manner);
    };
    QtDesktopSettings settings(own.bus);
    settings.awaitAnswers(kLongest);
    auto portal = comes(Portal::Manner::Old, {{kColorScheme, 1U}});
    EXPECT_TRUE(runUntil([&] { return settings.look() == kDark; }));

    portal.reset();
    portal = comes(Portal::Manner::Broken, {});
    ASSERT_TRUE(runUntil([&] { return portal->asked() == 4; }));
    portal->set(kContrast, 1U);
    EXPECT_TRUE(runUntil([&] { return settings.look().highContrast; }));
    EXPECT_EQ(settings.look(), (DesktopLook{Dark, {}, true, false}));

    portal.reset();
    portal = comes(Portal::Manner::New, {{kMotion, 1U}});
    EXPECT_TRUE(runUntil([&] { return settings.look() == DesktopLook{Unknown, {}, false, true}; }));
}

} // namespace
} // namespace vantor
