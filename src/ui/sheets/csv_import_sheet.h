// CsvImportSheet: what the two import sheets share: pasted or loaded text, an example, the result, and closing
// after a moment once something was imported.
//
// - Files can be chosen or dropped; one that cannot be read changes nothing, and is told. They are read beside the window.
// - Texts are understood beside the window too, one after the other, each as it was when it was to be imported. What is not
//   in the store when the sheet closes is not imported.
// - A list that is too long, or for which there is not the memory, is refused in the line of the result.
#pragma once

#include "ui/frame/services.h"
#include "ui/sheets/sheet.h"

#include <QTimer>
#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>

namespace vantor::ui {

class LargeTextEdit;

class CsvImportSheet : public Sheet {
protected:
    struct Texts {
        QString title;
        QString explanation;
        QString example;
        // With %1 for the count.
        QString result;
        // Whether the example stands above the text, or else below it.
        bool exampleFirst;
    };

    CsvImportSheet(QWidget* over, const char* objectName, const Texts& texts, const Services& services);

    // What became of an import; neither when there was nothing to import into.
    struct Result {
        std::optional<int> count;
        QString problem;
    };
    // Adds what was read to the store.
    using Add = std::function<Result()>;
    // Understands a text. Called beside the window, so that it uses nothing but the text and its own copies.
    using Reader = std::function<Add(std::string_view text)>;

    // For a text that is to be imported now.
    [[nodiscard]] virtual Reader reader() = 0;

    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    struct ReadList;

    void makeEditor(const Texts& texts);
    void chooseFile();
    void readFile(const std::filesystem::path& path);
    void runImport();
    void readNext();
    void take(const ReadList& read);
    void show(const Result& result);
    void closeWhenDone();

    const Services& m_services;
    QString m_result;
    // The moment between what was imported and closing, which waits for an open file dialog as well.
    QTimer m_closing;
    bool m_imported = false;
    bool m_asking = false;
    bool m_reading = false;
    // Texts that are to be imported after the one that is being read.
    std::deque<QString> m_waiting;
    // Counts the files that were chosen: only the last one's text is shown, however long it takes.
    int m_chosen = 0;
    LargeTextEdit* m_csvText;
    TextLabel* m_onlyBeginning;
    TextLabel* m_resultLabel;
    QPushButton* m_import;
};

} // namespace vantor::ui
