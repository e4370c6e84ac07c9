// Cards as a scanner sees them: made by the real exporter, printed as pixels, cut apart; and sets to print.
#pragma once

#include "model/shoot.h"
#include "output/bulk_qr_pdf_exporter.h"
#include "tests/output/code_readers.h"

#include <cstddef>
#include <random>
#include <vector>

namespace vantor::testing {

// A set whose card's text takes exactly so many bytes (20 or more), a good part of them not ASCII.
[[nodiscard]] SetData setOfBytes(std::size_t bytes, std::mt19937& random);

// The card of each set, its whole cell. Empty when the cards could not be made.
[[nodiscard]] std::vector<GrayPicture> printedCards(const SetList& sets, BulkQRDensity density,
                                                    int dotsPerInch);

} // namespace vantor::testing
