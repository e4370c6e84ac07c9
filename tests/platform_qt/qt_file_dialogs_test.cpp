#include "platform/qt/qt_dutch_texts.h"
#include "platform/qt/qt_file_dialogs.h"
#include "tests/support/event_loop.h"
#include "tests/support/pseudo_translation.h"
#include "tests/support/read_file.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QTimer>
#include <algorithm>
#include <deque>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace vantor {
namespace {

namespace fs = std::filesystem;

using Path = std::optional<fs::path>;

const FileType kCsv{"CSV-bestand", {"csv"}};
const FileType kText{"Tekst", {"txt", "text"}};

// Plays the user: handles one dialog after the other as they appear in front.
class User {
public:
    User() {
        m_timer.setInterval(5);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
        m_timer.start();
    }
    User(const User&) = delete;
    User& operator=(const User&) = delete;
    ~User() { EXPECT_TRUE(m_steps.empty()) << "waits in vain for " << m_steps.front().first; }

    template <typename Dialog>
    User& when(const std::string& objectName, std::function<void(Dialog&)> act) {
        m_steps.emplace_back(objectName,
                             [act = std::move(act)](QWidget& widget) { act(dynamic_cast<Dialog&>(widget)); });
        return *this;
    }
    User& whenSaving(std::function<void(QFileDialog&)> act) { return when("saveDialog", std::move(act)); }
    User& whenOpening(std::function<void(QFileDialog&)> act) { return when("openDialog", std::move(act)); }
    User& whenAsked(std::function<void(QMessageBox&)> act) { return when("replaceQuestion", std::move(act)); }

private:
    void look() {
        auto* const front = QApplication::activeModalWidget();
        if (front == nullptr || !front->isVisible() || !front->isActiveWindow())
            return;
        if (m_steps.empty() || front->objectName().toStdString() != m_steps.front().first) {
            if (++m_patience > 200) {
                ADD_FAILURE() << "nobody expects " << front->objectName().toStdString();
                front->close();
            }
            return;
        }
        m_patience = 0;
        const auto act = std::move(m_steps.front().second);
        m_steps.pop_front();
        act(*front);
    }

    QTimer m_timer;
    std::deque<std::pair<std::string, std::function<void(QWidget&)>>> m_steps;
    int m_patience = 0;
};

void press(QMessageBox& question, const char* text) {
    for (auto* const button : question.buttons()) {
        if (button->text() == QString::fromUtf8(text)) {
            button->click();
            return;
        }
    }
    ADD_FAILURE() << "no button " << text;
    question.reject();
}

// Not by its text: the toolkit calls the button otherwise while it stands for going into a folder.
void press(QFileDialog& dialog, QDialogButtonBox::StandardButton which) {
    auto* const button = dialog.findChild<QDialogButtonBox*>()->button(which);
    EXPECT_TRUE(button != nullptr && button->isEnabled());
    button->click();
}

QLineEdit& nameField(QFileDialog& dialog) {
    return *dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
}

// As a user would type it: what is chosen in the list counts for more while the field has no focus.
void type(QFileDialog& dialog, const std::string& name) {
    nameField(dialog).setFocus();
    nameField(dialog).setText(QString::fromStdString(name));
}

std::function<void(QFileDialog&)> pressing(QDialogButtonBox::StandardButton which) {
    return [=](QFileDialog& dialog) { press(dialog, which); };
}

std::function<void(QFileDialog&)> open(const std::string& name) {
    return [=](QFileDialog& dialog) {
        type(dialog, name);
        press(dialog, QDialogButtonBox::Open);
    };
}

std::function<void(QFileDialog&)> saveAs(const std::string& name) {
    return [=](QFileDialog& dialog) {
        type(dialog, name);
        press(dialog, QDialogButtonBox::Save);
    };
}

class QtFileDialogsTest : public ::testing::Test {
protected:
    [[nodiscard]] std::string in(const std::string& name) const { return (folder / name).string(); }
    void makeFile(const std::string& name) const { std::ofstream(folder / name) << "oud"; }

    // The answer; waits for it.
    Path askToSave(const std::string& proposed, const FileType& type) {
        return answerTo([&](auto onAnswer) { dialogs.askWhereToSave({&window}, proposed, type, onAnswer); });
    }
    Path askToOpen(const std::vector<FileType>& types) {
        return answerTo([&](auto onAnswer) { dialogs.askWhatToOpen({&window}, types, onAnswer); });
    }

    testing::TemporaryFolder folder;
    QtFileDialogs dialogs;
    QWidget window;
    User user;

private:
    static Path answerTo(const std::function<void(FileDialogs::OnAnswer)>& ask) {
        std::optional<Path> answer;
        ask([&](const Path& path) {
            EXPECT_FALSE(answer.has_value()) << "answered twice";
            answer = path;
        });
        EXPECT_FALSE(answer.has_value()) << "answered before the user could";
        EXPECT_TRUE(testing::runUntil([&] { return answer.has_value(); }));
        return answer.value_or(Path());
    }
};

TEST_F(QtFileDialogsTest, BlocksTheWindowThatAsksAndGivesNothingWhenTheUserCancels) {
    user.whenSaving([this](QFileDialog& dialog) {
        EXPECT_EQ(dialog.parentWidget(), &window);
        EXPECT_EQ(dialog.windowModality(), Qt::WindowModal);
        press(dialog, QDialogButtonBox::Cancel);
    });
    EXPECT_EQ(askToSave("Zomer.csv", kCsv), Path());
    user.whenSaving([](QFileDialog& dialog) { dialog.close(); });
    EXPECT_EQ(askToSave("Zomer.csv", kCsv), Path());
    user.whenOpening(pressing(QDialogButtonBox::Cancel));
    EXPECT_EQ(askToOpen({kCsv}), Path());
}

TEST_F(QtFileDialogsTest, ShowsAndSavesAProposalAsItStands) {
    // So that the dialogs are in the folder of the test.
    user.whenSaving(saveAs(in("eerst.csv")));
    EXPECT_EQ(askToSave("x", kCsv), folder / "eerst.csv");
    for (const std::string proposed :
         {"Zomer op Texel.csv", "..-..-etc-x.csv", ":x.csv", "Été ☀️ “Zomer”.csv",
          "Shoot \"Zomer\".csv", "24\" scherm.csv", "50% & <b>*? \\n;'.csv", "Sets.CSV"}) {
        std::string shown;
        user.whenSaving([&](QFileDialog& dialog) {
            shown = nameField(dialog).text().toStdString();
            press(dialog, QDialogButtonBox::Save);
        });
        EXPECT_EQ(askToSave(proposed, kCsv), folder / proposed);
        EXPECT_EQ(shown, proposed);
    }
}

TEST_F(QtFileDialogsTest, AddsTheExtensionWhereItIsMissing) {
    using Names = std::pair<const char*, const char*>;
    for (const auto& [typed, saved] :
         {Names{"naam", "naam.txt"}, Names{"naam.txt", "naam.txt"}, Names{"naam.TXT", "naam.TXT"},
          Names{"naam.text", "naam.text"}, Names{"naam.csv", "naam.csv.txt"}, Names{"14.3.26", "14.3.26.txt"},
          Names{"naamtxt", "naamtxt.txt"}, Names{"naam.", "naam..txt"}, Names{"\"naam\"", "\"naam\".txt"}}) {
        user.whenSaving(saveAs(in(typed)));
        EXPECT_EQ(askToSave("voorstel.txt", kText), folder / saved);
    }
}

TEST_F(QtFileDialogsTest, ReplacesOnlyAfterAskingAndGoesBackToTheDialogWhenTheFileIsToStay) {
    // Of that name, but without the extension.
    makeFile("sets");
    user.whenSaving(saveAs(in("sets")));
    EXPECT_EQ(askToSave("Zomer.csv", kCsv), folder / "sets.csv");
    makeFile("sets.csv");
    std::string asked;
    std::string proposed;
    user.whenSaving(saveAs(in("sets.csv")))
        .whenAsked([](QMessageBox& question) { press(question, "Annuleer"); })
        .whenSaving([&](QFileDialog& dialog) {
            proposed = nameField(dialog).text().toStdString();
            EXPECT_EQ(dialog.directory().path().toStdString(), folder.path().string());
            saveAs("sets")(dialog);
        })
        .whenAsked([&](QMessageBox& question) {
            asked = question.text().toStdString();
            EXPECT_EQ(question.defaultButton()->text(), QStringLiteral("Annuleer"));
            press(question, "Vervang");
        });
    EXPECT_EQ(askToSave("Zomer.csv", kCsv), folder / "sets.csv");
    EXPECT_EQ(proposed, "sets.csv");
    EXPECT_EQ(asked, "“sets.csv” bestaat al. Wil je het vervangen?") << "with the extension that was added";
    EXPECT_EQ(testing::readFile(folder / "sets.csv"), "oud");
}

TEST_F(QtFileDialogsTest, AsksByANameThatCannotReorderTheQuestion) {
    makeFile("<b>\u202Egnp\x01.csv");
    std::string asked;
    user.whenSaving(saveAs(in("<b>\u202Egnp\x01.csv")))
        .whenAsked([&](QMessageBox& question) {
            asked = question.text().toStdString();
            EXPECT_EQ(question.textFormat(), Qt::PlainText);
            // As Escape does.
            question.close();
        })
        .whenSaving([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(askToSave("Zomer.csv", kCsv), std::nullopt);
    EXPECT_EQ(asked, "“\u2068<b>\u202Egnp<U+0001>.csv\u2069” bestaat al. Wil je het vervangen?");
}

TEST_F(QtFileDialogsTest, NeverReplacesAFolder) {
    fs::create_directory(folder / "sets.csv");
    std::string said;
    user.whenSaving(saveAs(in("sets")))
        .whenAsked([&](QMessageBox& question) {
            said = question.text().toStdString();
            press(question, "Sluit");
        })
        .whenSaving(saveAs("sets-2"));
    EXPECT_EQ(askToSave("Zomer.csv", kCsv), folder / "sets-2.csv");
    EXPECT_THAT(said, ::testing::HasSubstr("“sets.csv” is een map"));
}

TEST_F(QtFileDialogsTest, RemembersTheFolderOfTheLastFile) {
    fs::create_directory(folder / "map");
    makeFile("map/sets.csv");
    user.whenOpening([](QFileDialog& dialog) {
        const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
        EXPECT_EQ(dialog.directory(), documents.exists() ? documents : QDir::home());
        dialog.reject();
    });
    EXPECT_EQ(askToOpen({kCsv}), Path());

    user.whenOpening(open(in("map/sets.csv")));
    EXPECT_EQ(askToOpen({kCsv}), folder / "map" / "sets.csv");
    user.whenSaving(saveAs("nieuw"));
    EXPECT_EQ(askToSave("Zomer.csv", kCsv), folder / "map" / "nieuw.csv");
    user.whenSaving(saveAs(in("hoger")));
    EXPECT_EQ(askToSave("Zomer.csv", kCsv), folder / "hoger.csv");
    user.whenSaving(pressing(QDialogButtonBox::Save));
    EXPECT_EQ(askToSave("Zomer.csv", kCsv), folder / "Zomer.csv");
}

TEST_F(QtFileDialogsTest, OpensOneExistingFileOfAnyOfTheTypes) {
    // With quotation marks in its name.
    makeFile(R"(24" "x".csv)");
    user.whenOpening([&](QFileDialog& dialog) {
        dialog.setDirectory(QString::fromStdString(folder.path().string()));
        auto* const list = dialog.findChild<QListView*>(QStringLiteral("listView"));
        const auto entry = [=] { return list->model()->index(0, 0, list->rootIndex()); };
        ASSERT_TRUE(testing::runUntil([&] { return entry().isValid(); }));
        list->setCurrentIndex(entry());
        Q_EMIT list->activated(entry());
    });
    EXPECT_EQ(askToOpen({kCsv}), folder / R"(24" "x".csv)");
    makeFile("sets.txt");
    user.whenOpening([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.nameFilters(),
                  QStringList{QStringLiteral("CSV-bestand, Tekst (*.csv *.txt *.text)")});
        EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
        open(in("sets.txt"))(dialog);
    });
    EXPECT_EQ(askToOpen({kCsv, kText}), folder / "sets.txt");
}

TEST_F(QtFileDialogsTest, GoesUnansweredWithTheWindowThatAsked) {
    makeFile("sets.csv");
    const auto never = [](const Path&) { ADD_FAILURE() << "answered"; };
    const auto isOpen = [](const char* name) {
        return std::ranges::any_of(QApplication::topLevelWidgets(), [&](const QWidget* each) {
            return each->objectName() == QLatin1String(name) && each->isVisible();
        });
    };
    for (const auto* const name : {"openDialog", "saveDialog", "replaceQuestion"}) {
        auto asking = std::make_unique<QWidget>();
        if (std::string(name) == "openDialog")
            dialogs.askWhatToOpen({asking.get()}, {kCsv}, never);
        else
            dialogs.askWhereToSave({asking.get()}, "x", kCsv, never);
        if (std::string(name) == "replaceQuestion")
            saveAs(in("sets.csv"))(*asking->findChild<QFileDialog*>());
        EXPECT_TRUE(isOpen(name)) << name;
        asking.reset();
        QApplication::processEvents();
        EXPECT_FALSE(isOpen(name)) << name;
    }
}

std::set<std::string> textsOf(const QWidget& dialog) {
    std::set<std::string> texts{dialog.windowTitle().toStdString()};
    const auto add = [&](const QString& text) {
        if (!text.isEmpty())
            texts.insert(text.toStdString());
    };
    for (const auto* const label : dialog.findChildren<QLabel*>())
        add(label->text());
    for (const auto* const button : dialog.findChildren<QAbstractButton*>()) {
        if (button->isVisible()) {
            add(button->text());
            add(button->toolTip());
        }
    }
    return texts;
}

TEST_F(QtFileDialogsTest, SpeaksDutch) {
    useDutchTexts(*qApp);
    // The window hears of the texts before it asks.
    QApplication::processEvents();
    std::set<std::string> texts;
    user.whenSaving([&](QFileDialog& dialog) {
        texts = textsOf(dialog);
        dialog.reject();
    });
    EXPECT_EQ(askToSave("Zomer.csv", kCsv), Path());
    EXPECT_THAT(texts, ::testing::UnorderedElementsAre(
                           "Bewaar als", "Map:", "Bestandsnaam:", "Soort:", "Bewaar", "Annuleer", "Terug",
                           "Verder", "Hogere map", "Nieuwe map aanmaken", "Lijstweergave", "Detailweergave"));
    fs::create_directory(folder / "kaarten");
    makeFile("sets.csv");
    std::map<std::string, std::string> kinds;
    user.whenOpening([&](QFileDialog& dialog) {
        texts = textsOf(dialog);
        const auto* const model = dialog.findChild<QFileSystemModel*>();
        ASSERT_NE(model, nullptr);
        for (const auto* const name : {"kaarten", "sets.csv"})
            kinds[name] = model->type(model->index(QString::fromStdString(in(name)))).toStdString();
        dialog.reject();
    });
    EXPECT_EQ(askToOpen({kCsv}), Path());
    EXPECT_THAT(texts, ::testing::IsSupersetOf({"Open bestand", "Open", "Annuleer"}));
    EXPECT_THAT(kinds, ::testing::UnorderedElementsAre(::testing::Pair("kaarten", "Map"),
                                                       ::testing::Pair("sets.csv", "csv-bestand")));
}

TEST_F(QtFileDialogsTest, SaysItsOwnTextsInAnotherLanguage) {
    testing::PseudoTranslation translation;
    const auto translated = [](const QString& text) {
        return !text.isEmpty() && !testing::PseudoTranslation::isUntranslated(text.toStdString());
    };
    fs::create_directory(folder / "1.0");
    makeFile("2.0");
    const auto look = [&](QFileDialog& dialog) {
        EXPECT_TRUE(translated(dialog.windowTitle()));
        for (const auto label : {QFileDialog::LookIn, QFileDialog::FileName, QFileDialog::FileType,
                                 QFileDialog::Accept, QFileDialog::Reject})
            EXPECT_TRUE(translated(dialog.labelText(label))) << label;
        EXPECT_TRUE(translated(dialog.nameFilters().front().section(QLatin1Char(' '), 0, 0)));
    };
    user.whenOpening([&](QFileDialog& dialog) {
        look(dialog);
        dialog.reject();
    });
    EXPECT_EQ(askToOpen({kCsv}), Path());
    const FileType kOther{"Bestand", {"0"}};
    const auto lookAtQuestion = [&](QMessageBox& question) {
        EXPECT_TRUE(translated(question.windowTitle()));
        EXPECT_TRUE(translated(question.text()));
        for (const auto* const button : question.buttons())
            EXPECT_TRUE(translated(button->text()));
        question.reject();
    };
    for (const auto* const name : {"1", "2"}) {
        user.whenSaving([&, name](QFileDialog& dialog) {
            look(dialog);
            saveAs(in(name))(dialog);
        });
        user.whenAsked(lookAtQuestion);
        user.whenSaving(pressing(QDialogButtonBox::Cancel));
        EXPECT_EQ(askToSave("3", kOther), Path());
    }
}

} // namespace
} // namespace vantor
