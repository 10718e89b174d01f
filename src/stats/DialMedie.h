#pragma once
// The printed faces of the two dials of the averages window: scale, marks and
// coloured bands, laid under the needle that Strum draws.
#include <QImage>

namespace stats {

// The 270-degree dial of "Operazioni in guadagno ogni 10": 0 to 10.
QImage QuadranteCentro(int width, int height);
// The quarter dial of the luck factor, pivoting near the lower right: 0 to 100%.
QImage QuadranteAngolo(int width, int height);

} // namespace stats
