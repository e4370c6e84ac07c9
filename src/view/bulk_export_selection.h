// BulkExportSelection: which sets of a shoot get a printed card, and how densely.
//
// Starts with every set selected and the large cards.
#pragma once

#include "base/uuid.h"
#include "model/shoot.h"
#include "output/bulk_qr_pdf_exporter.h"

#include <cstddef>
#include <unordered_set>

namespace vantor {

class BulkExportSelection {
public:
    explicit BulkExportSelection(SetList sets);

    BulkQRDensity density = BulkQRDensity::large;

    [[nodiscard]] const SetList& sets() const { return m_sets; }
    [[nodiscard]] std::size_t selectedCount() const { return m_selectedIds.size(); }
    [[nodiscard]] bool isSelected(const Uuid& id) const { return m_selectedIds.contains(id); }
    void select(const Uuid& id, bool selected);

    // Whether as many ids are selected as there are sets; then the button offers to deselect.
    [[nodiscard]] bool allSelected() const { return m_selectedIds.size() == m_sets.size(); }
    void toggleAll();

    // In the shoot's order.
    [[nodiscard]] SetList selectedSets() const;
    [[nodiscard]] bool canExport() const;

private:
    SetList m_sets;
    std::unordered_set<Uuid> m_selectedIds;
};

} // namespace vantor
