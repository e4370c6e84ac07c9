// VersionsSheet: the earlier versions of all that is kept, and what is in the chosen one, to put back whole or shoot by shoot.
//
// Files are read beside the window. It stays open, so that another version can be tried.
#pragma once

#include "ui/frame/services.h"
#include "ui/sheets/sheet.h"
#include "view/version_list.h"

class QStackedWidget;

namespace vantor::ui {

class RecyclingList;

class VersionsSheet : public Sheet {
public:
    VersionsSheet(QWidget* over, const Services& services);

private:
    RecyclingList* makeVersionList();
    RecyclingList* makeShootList();
    QWidget* makeContentPanel();
    void readVersions();
    void showVersions(std::vector<Version> versions);
    void choose(int place);
    void readContent();
    void renderContent();
    void restoreVersion();
    void restoreShootAt(int place);
    void perform(Change change);

    const Services& m_services;
    VersionList m_versions;
    QStackedWidget* m_versionStack;
    RecyclingList* m_versionList;
    QStackedWidget* m_shootStack;
    RecyclingList* m_shootList;
    TextLabel* m_noShoots;
    QPushButton* m_restoreAll;
};

} // namespace vantor::ui
