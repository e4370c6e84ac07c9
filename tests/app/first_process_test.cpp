#include "app/first_process.h"
#include "platform/posix/posix_process_lock.h"
#include "tests/support/event_loop.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QLocalSocket>
#include <QThread>
#include <atomic>
#include <memory>
#include <thread>
#include <utility>

namespace vantor::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Role = FirstProcess::Role;
using Files = std::vector<std::filesystem::path>;

class NoLock final : public ProcessLock {
public:
    Attempt tryTake() override { return Attempt::Impossible; }
    void release() override {}
    void tell(std::string_view) override {}
    [[nodiscard]] std::string told() const override { return {}; }
};

// Another start, on a thread of its own as it waits there.
class Start {
public:
    Start(std::unique_ptr<ProcessLock> lock, QStringList places, Files files,
          std::chrono::milliseconds patience)
        : m_lock(std::move(lock)),
          m_thread(QThread::create([this, places = std::move(places), files = std::move(files), patience] {
              FirstProcess process(*m_lock, places, patience);
              m_role = process.begin(files);
              m_handedBefore = process.handedBeforeAt().has_value();
              m_ended = true;
          })) {
        m_thread->start();
    }
    ~Start() { m_thread->wait(); }
    Start(const Start&) = delete;
    Start& operator=(const Start&) = delete;

    [[nodiscard]] bool hasEnded() const { return m_ended; }
    // Lets the owner's event loop run until the start knows.
    [[nodiscard]] Role role() {
        EXPECT_TRUE(runUntil([this] { return hasEnded(); }));
        return m_role;
    }
    [[nodiscard]] bool handedBefore() const { return m_handedBefore; }

private:
    std::unique_ptr<ProcessLock> m_lock;
    std::atomic<Role> m_role = Role::Unanswered;
    std::atomic<bool> m_handedBefore = false;
    std::atomic<bool> m_ended = false;
    std::unique_ptr<QThread> m_thread;
};

class FirstProcessTest : public ::testing::Test {
protected:
    [[nodiscard]] std::unique_ptr<ProcessLock> makeLock() const {
        return std::make_unique<PosixProcessLock>(m_folder / "lock");
    }

    void own() { own(makeLock()); }
    void own(std::unique_ptr<ProcessLock> lock) {
        m_lock = std::move(lock);
        m_owner.emplace(*m_lock, m_places);
        ASSERT_EQ(m_owner->begin({}), Role::Owner);
    }

    // Keeps what is handed over, and answers at once if it is to.
    void serve(bool answers = true) {
        m_owner->serve([this, answers](const ui::HandedFiles& handed) {
            m_handed.push_back(handed);
            if (answers)
                handed.whenDone(true);
        });
    }

    void ownAndServe(bool answers = true) {
        own();
        serve(answers);
    }

    void end() {
        m_owner.reset();
        m_lock.reset();
    }

    [[nodiscard]] Start start(Files files, std::chrono::milliseconds patience = 10s) const {
        return {makeLock(), m_places, std::move(files), patience};
    }

    [[nodiscard]] Role roleOf(Files files, std::chrono::milliseconds patience = 10s) const {
        return start(std::move(files), patience).role();
    }

    // A peer that may say anything.
    [[nodiscard]] std::unique_ptr<QLocalSocket> connected() const {
        auto socket = std::make_unique<QLocalSocket>();
        socket->connectToServer(m_places.front());
        EXPECT_TRUE(socket->waitForConnected());
        return socket;
    }

    static std::string messageOf(Files files) {
        auto message = writeHandOver({std::move(files), {}});
        EXPECT_TRUE(message);
        return message ? std::move(*message) : std::string();
    }

    // One that has the owner ready for the files.
    [[nodiscard]] std::unique_ptr<QLocalSocket> awaited(Files files) const {
        auto socket = connected();
        say(*socket, messageOf(std::move(files)));
        EXPECT_TRUE(hears(*socket, "r"));
        return socket;
    }

    static void say(QLocalSocket& socket, const std::string& bytes) {
        socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
        socket.flush();
    }

    static bool hears(QLocalSocket& socket, const char* what) {
        return runUntil([&] { return socket.bytesAvailable() > 0; }) && socket.readAll() == what;
    }

    static bool isLeft(const QLocalSocket& socket) {
        return runUntil([&] { return socket.state() == QLocalSocket::UnconnectedState; });
    }

    TemporaryFolder m_folder;
    QStringList m_places{QString::fromStdString((m_folder / "socket").string())};
    std::unique_ptr<ProcessLock> m_lock;
    std::optional<FirstProcess> m_owner;
    std::vector<ui::HandedFiles> m_handed;
};

TEST_F(FirstProcessTest, HandsFilesOverOnceAndInOrderAlsoThoseThatCameBeforeItServes) {
    own();
    auto early = start({"/a"});
    std::this_thread::sleep_for(300ms);
    EXPECT_FALSE(early.hasEnded());
    serve();
    EXPECT_EQ(early.role(), Role::HandedOver);
    EXPECT_THAT(m_handed, SizeIs(1));
    m_handed.clear();

    const Files files{"/b \xC3\xA9\n.vantor", "/\xFF\xFE.vantor", "/a"};
    EXPECT_EQ(roleOf(files), Role::HandedOver);
    ASSERT_THAT(m_handed, SizeIs(1));
    EXPECT_EQ(m_handed[0].files, files);
    EXPECT_FALSE(m_handed[0].handedBeforeAt);
    EXPECT_EQ(roleOf({}), Role::HandedOver);
    ASSERT_THAT(m_handed, SizeIs(2));
    EXPECT_THAT(m_handed[1].files, IsEmpty());
}

TEST_F(FirstProcessTest, AnswersOnlyWhenTheFilesAreOpened) {
    ownAndServe(false);
    auto second = start({"/a"}, 1s);
    // Longer than its patience, which signs of life renew.
    ASSERT_TRUE(runUntil([&] { return m_handed.size() == 1; }));
    runFor(1500ms);
    EXPECT_FALSE(second.hasEnded());
    EXPECT_TRUE(m_handed[0].isWanted());
    m_handed[0].whenDone(true);
    EXPECT_EQ(second.role(), Role::HandedOver);
    EXPECT_THAT(m_handed, SizeIs(1));
}

TEST_F(FirstProcessTest, WaitsForAnOwnerThatDoesNotListenYetAsLongAsItsPatience) {
    m_lock = makeLock();
    ASSERT_EQ(m_lock->tryTake(), ProcessLock::Attempt::Taken);
    EXPECT_EQ(roleOf({"/a"}, 300ms), Role::Unanswered);
    auto second = start({"/a"});
    std::this_thread::sleep_for(300ms);
    EXPECT_FALSE(second.hasEnded());
    own(std::move(m_lock));
    serve();
    EXPECT_EQ(second.role(), Role::HandedOver);
}

TEST_F(FirstProcessTest, GivesAnOwnerUpThatDoesNotReact) {
    own();
    QElapsedTimer elapsed;
    elapsed.start();
    {
        auto second = start({"/a"}, 500ms);
        // The owner's event loop does not run.
        while (!second.hasEnded())
            std::this_thread::sleep_for(1ms);
        EXPECT_EQ(second.role(), Role::Unanswered);
    }
    EXPECT_GE(elapsed.elapsed(), 500);
    // What was given up is not opened when the owner comes back.
    serve();
    runFor(200ms);
    EXPECT_THAT(m_handed, IsEmpty());
    EXPECT_EQ(roleOf({"/b"}), Role::HandedOver);
    ASSERT_THAT(m_handed, SizeIs(1));
    EXPECT_THAT(m_handed[0].files, ElementsAre("/b"));
}

TEST_F(FirstProcessTest, DoesNotOpenWhatWasGivenUpAfterGoAndTellsThatNobodyWaitsAnyMoreWhileItOpens) {
    ownAndServe(false);
    auto socket = awaited({"/a"});
    say(*socket, "g");
    // Both are there when the owner looks next.
    socket->abort();
    runFor(200ms);
    EXPECT_THAT(m_handed, IsEmpty());
    socket = awaited({"/a"});
    say(*socket, "g");
    ASSERT_TRUE(runUntil([&] { return m_handed.size() == 1; }));
    EXPECT_TRUE(m_handed[0].isWanted());
    socket->abort();
    EXPECT_FALSE(m_handed[0].isWanted());
    m_handed[0].whenDone(true);
    runFor(50ms);
    EXPECT_FALSE(m_handed[0].isWanted());
    m_handed[0].whenDone(false);
}

TEST_F(FirstProcessTest, BecomesTheOwnerWhenThatOneEndsBeforeItOpened) {
    own();
    auto second = start({"/a"});
    std::this_thread::sleep_for(200ms);
    end();
    EXPECT_EQ(second.role(), Role::Owner);
    EXPECT_FALSE(second.handedBefore());
}

TEST_F(FirstProcessTest, KnowsThatAnOwnerEndedWhileItOpened) {
    ownAndServe(false);
    const auto before = Timestamp::now().secondsSinceReference;
    auto second = start({"/a"});
    ASSERT_TRUE(runUntil([&] { return m_handed.size() == 1; }));
    const auto now = Timestamp::now().secondsSinceReference;
    end();
    ownAndServe();
    EXPECT_EQ(second.role(), Role::HandedOver);
    ASSERT_THAT(m_handed, SizeIs(2));
    EXPECT_THAT(m_handed[1].files, ElementsAre("/a"));
    ASSERT_TRUE(m_handed[1].handedBeforeAt);
    // While the first owner was told, however long that took.
    EXPECT_GE(m_handed[1].handedBeforeAt->secondsSinceReference, before);
    EXPECT_LE(m_handed[1].handedBeforeAt->secondsSinceReference, now);
    EXPECT_FALSE(m_handed[0].isWanted());
    m_handed[0].whenDone(true);
}

TEST_F(FirstProcessTest, AsksAgainWhenTheOwnerGaveUp) {
    own();
    m_owner->serve([this](const ui::HandedFiles& handed) {
        m_handed.push_back(handed);
        handed.whenDone(m_handed.size() == 2);
    });
    EXPECT_EQ(roleOf({"/a"}), Role::HandedOver);
    ASSERT_THAT(m_handed, SizeIs(2));
    EXPECT_TRUE(m_handed[1].handedBeforeAt);
}

TEST_F(FirstProcessTest, TakesAMessageThatComesByteByByteAndIsNotHeldUpByPeersThatSayNothing) {
    ownAndServe();
    std::vector<std::unique_ptr<QLocalSocket>> silent;
    for (int i = 0; i < 100; ++i) {
        silent.push_back(connected());
        runFor(1ms);
    }
    say(*silent[0], "VANTOR1\n");
    auto socket = connected();
    for (const char byte : messageOf({"/a", "/b"})) {
        say(*socket, std::string(1, byte));
        runFor(1ms);
    }
    ASSERT_TRUE(hears(*socket, "r"));
    say(*socket, "g");
    EXPECT_TRUE(hears(*socket, "d"));
    ASSERT_THAT(m_handed, SizeIs(1));
    EXPECT_THAT(m_handed[0].files, ElementsAre("/a", "/b"));
}

TEST_F(FirstProcessTest, LeavesPeersThatSpeakAnotherLanguage) {
    ownAndServe();
    const auto good = messageOf({"/a"});
    for (const auto& bytes :
         {std::string("GET / HTTP/1.1\r\n\r\n"), std::string("\xFF\xFE\xFD\xFC"), good + "g",
          std::string("VANTOR1\n\xFF\xFF\xFF\xFF"), std::string(1 << 20, 'x')}) {
        auto socket = connected();
        say(*socket, bytes);
        EXPECT_TRUE(isLeft(*socket));
    }
    auto socket = awaited({"/a"});
    say(*socket, "gg");
    EXPECT_TRUE(isLeft(*socket));
    EXPECT_THAT(m_handed, IsEmpty());
    EXPECT_EQ(roleOf({"/b"}), Role::HandedOver);
    EXPECT_THAT(m_handed, SizeIs(1));
}

TEST_F(FirstProcessTest, TakesTheSocketOfAKilledOwnerOver) {
    {
        // A name that nobody listens at.
        QLocalServer dead;
        ASSERT_TRUE(dead.listen(m_places.front()));
        std::filesystem::create_hard_link(m_folder / "socket", m_folder / "kept");
        dead.close();
        std::filesystem::rename(m_folder / "kept", m_folder / "socket");
    }
    own();
    EXPECT_EQ(std::filesystem::status(m_folder / "socket").permissions(), std::filesystem::perms(0600));
    serve();
    EXPECT_EQ(roleOf({"/a"}), Role::HandedOver);
}

TEST_F(FirstProcessTest, TakesTheNextPlaceWhereTheFirstCannotBeAndIsTheOnlyOwnerAlsoWhereItCannotListen) {
    m_places.prepend(QString::fromStdString((m_folder / "missing" / "socket").string()));
    m_places.prepend(QString::fromStdString((m_folder / std::string(200, 'x')).string()));
    ownAndServe();
    EXPECT_EQ(roleOf({"/a"}), Role::HandedOver);
    // As in another session, where other folders are for sockets.
    m_places = {QString::fromStdString((m_folder / "elsewhere").string())};
    EXPECT_EQ(roleOf({"/a"}), Role::HandedOver);
    end();
    m_places = {QString::fromStdString((m_folder / "missing" / "socket").string())};
    own();
    EXPECT_EQ(roleOf({"/a"}, 300ms), Role::Unanswered);
}

TEST_F(FirstProcessTest, IsTheOwnerByListeningWhereThereCanBeNoLock) {
    own(std::make_unique<NoLock>());
    serve();
    Start second(std::make_unique<NoLock>(), m_places, {"/a"}, 10s);
    EXPECT_EQ(second.role(), Role::HandedOver);
    // Also for one that does get the lock.
    EXPECT_EQ(roleOf({"/b"}), Role::HandedOver);
    EXPECT_THAT(m_handed, SizeIs(2));
}

// Listens under a name of the folder for temporary files, as another user of the machine.
class Impostor {
public:
    // `name` belongs to the other user as well, or was given away.
    Impostor(const QString& name, bool ownsName) {
        EXPECT_EQ(::seteuid(kNobody), 0);
        EXPECT_TRUE(m_server.listen(name));
        EXPECT_EQ(::seteuid(0), 0);
        if (!ownsName) {
            EXPECT_EQ(::chown(name.toLocal8Bit().constData(), 0, 0), 0);
        }
        QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] {
            ++connections;
            auto* const socket = m_server.nextPendingConnection();
            QObject::connect(socket, &QLocalSocket::readyRead, socket, [this, socket] {
                heard += socket->readAll();
                socket->write("rd");
            });
            socket->write("rd");
        });
    }

    int connections = 0;
    QByteArray heard;

private:
    static constexpr uid_t kNobody = 65534;
    QLocalServer m_server;
};

class ForeignPlaceTest : public FirstProcessTest, public ::testing::WithParamInterface<bool> {};

TEST_P(ForeignPlaceTest, IsNeitherToldNorBelieved) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can be somebody else";
    std::filesystem::permissions(m_folder / "", std::filesystem::perms::all);
    const Impostor impostor(m_places.front(), GetParam());
    // Somebody owns the data, and did not tell where.
    m_lock = makeLock();
    ASSERT_EQ(m_lock->tryTake(), ProcessLock::Attempt::Taken);
    EXPECT_EQ(roleOf({"/geheim"}, 300ms), Role::Unanswered);
    m_lock.reset();
    EXPECT_EQ(roleOf({"/geheim"}), Role::Owner);
    runFor(20ms);
    EXPECT_TRUE(impostor.heard.isEmpty());
    // A name of his own could hold the start up already while it connects.
    EXPECT_EQ(impostor.connections == 0, GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, ForeignPlaceTest, ::testing::Bool());

} // namespace
} // namespace vantor::testing
