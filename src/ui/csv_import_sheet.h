// CsvImportSheet: what the two import sheets share: pasted or loaded text, an example, the result, and closing
// after a moment once something was imported.
//
// Files can be chosen or dropped; one that cannot be read changes nothing. They are read beside the window.
#pragma once

#include "ui/services.h"
#include "ui/sheet.h"

#include <QTimer>
#include <filesystem>
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

    // Imports the text; the result is how many records were added, or absent when nothing could be done.
    virtual std::optional<int> importText(std::string_view text) = 0;

    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void chooseFile();
    void readFile(const std::filesystem::path& path);
    void runImport();

    const Services& m_services;
    QString m_result;
    QTimer m_closing;
    // Counts the files that were chosen: only the last one's text is shown, however long it takes.
    int m_chosen = 0;
    LargeTextEdit* m_csvText;
    TextLabel* m_onlyBeginning;
    TextLabel* m_resultLabel;
    QPushButton* m_import;
};

} // namespace vantor::ui
