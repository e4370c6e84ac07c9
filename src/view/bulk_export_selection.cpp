#include "view/bulk_export_selection.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vantor {

BulkExportSelection::BulkExportSelection(SetList sets) : m_sets(std::move(sets)) {
    for (const auto& set : m_sets)
        m_selectedIds.insert(set.id);
}

void BulkExportSelection::select(const Uuid& id, bool selected) {
    if (selected)
        m_selectedIds.insert(id);
    else
        m_selectedIds.erase(id);
}

void BulkExportSelection::toggleAll() {
    const bool deselect = allSelected();
    m_selectedIds.clear();
    if (deselect)
        return;
    for (const auto& set : m_sets)
        m_selectedIds.insert(set.id);
}

SetList BulkExportSelection::selectedSets() const {
    SetList selected;
    std::ranges::copy_if(m_sets, std::back_inserter(selected),
                         [&](const auto& set) { return isSelected(set.id); });
    return selected;
}

bool BulkExportSelection::canExport() const {
    return std::ranges::any_of(m_sets, [&](const auto& set) { return isSelected(set.id); });
}

} // namespace vantor
