#include "view/scanner_burst.h"

namespace vantor {

ScannerBurst::EarlierReturn ScannerBurst::key(Time at) {
    const auto earlier = judge(at);
    m_waiting.reset();
    return earlier;
}

ScannerBurst::EarlierReturn ScannerBurst::returnKey(Time at) {
    const auto earlier = judge(at);
    m_waiting = at;
    return earlier;
}

bool ScannerBurst::isRunning(Time at) const {
    return m_last && at - *m_last <= (m_atScannerPace ? kReturnPause : kScannerPace);
}

ScannerBurst::EarlierReturn ScannerBurst::judge(Time at) {
    m_atScannerPace = isRunning(at);
    m_last = at;
    if (!m_waiting)
        return EarlierReturn::None;
    return at - *m_waiting <= kReturnPause ? EarlierReturn::LineBreak : EarlierReturn::EndOfCard;
}

} // namespace vantor
