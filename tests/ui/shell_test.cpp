#include "formats/shoot_file.h"
#include "tests/ui/ui_fixture.h"
#include "ui/frame/shell.h"

#include <QTimer>

namespace vantor::testing {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

class ShellTest : public UiTest {
protected:
    ShellTest() : m_shell(m_services) {}

    static std::vector<QWidget*> windows() {
        std::vector<QWidget*> shown;
        for (auto* const window : QApplication::topLevelWidgets()) {
            if (window->isVisible())
                shown.push_back(window);
        }
        return shown;
    }

    ui::Shell m_shell;
};

TEST_F(ShellTest, OpensTheMainWindowOnce) {
    auto& window = m_shell.openMain();
    EXPECT_EQ(window.windowTitle(), "Vantor Prep");
    EXPECT_EQ(window.minimumSize(), QSize(700, 500));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_EQ(&m_shell.openMain(), &window);
    EXPECT_THAT(windows(), ::testing::ElementsAre(&window));
}

TEST_F(ShellTest, OpensTheGeneratorOnceAndBringsItForward) {
    auto& main = m_shell.openMain();
    click(main, "generatorButton");
    ASSERT_TRUE(isOpen("qr-generator"));
    auto& generator = m_shell.openGenerator();
    EXPECT_THAT(windows(), SizeIs(2));
    EXPECT_EQ(generator.windowTitle(), "QR Generator");
    EXPECT_GE(generator.minimumSize().width(), 500);
    EXPECT_EQ(generator.minimumSize().height(), 600);
    type(generator, "brand", "Nike");
    generator.showMinimized();
    main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
    click(main, "generatorButton");
    EXPECT_TRUE(QTest::qWaitForWindowActive(&generator));
    EXPECT_FALSE(generator.isMinimized());
    EXPECT_THAT(windows(), SizeIs(2));
    EXPECT_EQ(find<QLineEdit>(generator, "brand").text(), "Nike");
}

TEST_F(ShellTest, EndsWhenItsLastWindowCloses) {
    QApplication::setQuitOnLastWindowClosed(true);
    auto& main = m_shell.openMain();
    auto& generator = m_shell.openGenerator();
    bool ranOn = false;
    QTimer::singleShot(0, &main, [&] { main.close(); });
    QTimer::singleShot(100, &generator, [&] {
        ranOn = !isOpen("main") && generator.isVisible();
        generator.close();
    });
    QTimer tooLong;
    tooLong.callOnTimeout([] { QApplication::exit(1); });
    tooLong.start(5000);
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(ranOn);
    EXPECT_THAT(windows(), IsEmpty());
    QApplication::setQuitOnLastWindowClosed(false);
}

TEST_F(ShellTest, EscapeClosesTheGeneratorAloneAndControlQEverything) {
    auto& main = m_shell.openMain();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_shell.openGenerator()));
    pressAt(m_shell.openGenerator(), 1000, Qt::Key_Escape);
    settle();
    EXPECT_FALSE(isOpen("qr-generator"));
    m_shell.openGenerator();
    main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
    pressAt(main, 3000, Qt::Key_Escape);
    settle();
    EXPECT_TRUE(isOpen("main"));
    pressAt(main, 5000, Qt::Key_Q, QStringLiteral("\x11"), Qt::ControlModifier);
    settle();
    EXPECT_THAT(windows(), IsEmpty());
}

TEST_F(ShellTest, TheOpenSheetHasTheFocusAfterAHandOverAndAfterItsMessage) {
    m_files.files["/in/a.vantor"] = writeShootFile(ibiza());
    m_files.files["/in/b.vantor"] = "kapot";
    auto& main = m_shell.openMain();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
    click(main, "catalogButton");
    auto& catalog = sheet("catalogSheet");
    click(catalog, "importButton");
    auto& import = sheet("catalogImportSheet");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&import));
    m_shell.openFiles({{"/in/a.vantor"}, {}, {}, {}});
    settleReads();
    EXPECT_EQ(QApplication::focusWidget(), &find(import, "csvText"));
    m_shell.openFiles({{"/in/b.vantor"}, {}, {}, {}});
    settleReads();
    QTest::keyClick(&sheet("alert"), Qt::Key_Escape);
    settle();
    EXPECT_EQ(QApplication::focusWidget(), &find(import, "csvText"));
}

TEST_F(ShellTest, RemembersTheWindowsSizeAndForgetsWhatWasTypedInTheGenerator) {
    m_shell.openMain().resize(913, 617);
    type(m_shell.openGenerator(), "brand", "Nike");
    m_shell.openMain().close();
    settle();
    click(m_shell.openGenerator(), "generateButton");
    EXPECT_TRUE(isShown(m_shell.openGenerator(), "codePlate")) << "it works on without the main window";
    m_shell.openGenerator().close();
    settle();
    EXPECT_EQ(m_shell.openMain().size(), QSize(913, 617));
    EXPECT_EQ(textOf(m_shell.openGenerator(), "brand"), "");
}

} // namespace
} // namespace vantor::testing
