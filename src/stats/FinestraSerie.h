#pragma once
// What the draw-down and risk windows share: on the right the chart of the runs,
// with its title and side text; on the left the table and the frequency chart
// above the style switch, which acts on the chart of the runs alone.
#include "stats/Serie.h"

#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace platform {
class Chart;
class ChartStyleSwitch;
class FlexGrid;
} // namespace platform

namespace stats {

class FinestraSerie : public QWidget {
    Q_OBJECT
public:
    struct Disegno {
        QString nome, titolo;
        int icona = 0;
        QString graficoSerie, titoloSerie, testoLaterale;
        QString griglia, etichettaGriglia;
        QString graficoFrequenze, etichettaFrequenze;
        QString legendaSerie;
    };

protected:
    explicit FinestraSerie(const Disegno& d);
    void resizeEvent(QResizeEvent* event) override;

    // Rows 1..n of a run table as the run chart, one row each; a refresh puts the chart back to 3D bars.
    void MostraSerie(const TabellaSerie& valori, int n);
    // The table under the header, rows 1..n appended and rewritten; the grid is never cleared.
    void MostraTabella(const QString& intestazione0, const QString& intestazione1, const TabellaGrafico& g, int n,
                       const QString& suffissoValore);
    // The whole chart table as an XY chart.
    void MostraFrequenze(const TabellaGrafico& g);

    QVBoxLayout* Colonna() const { return colonna_; }

private:
    QWidget* sinistra_ = nullptr;
    QVBoxLayout* colonna_ = nullptr;
    QLabel* Text1_ = nullptr;
    platform::Chart* serie_ = nullptr;
    platform::Chart* frequenze_ = nullptr;
    platform::FlexGrid* griglia_ = nullptr;
    platform::ChartStyleSwitch* frm_Grafici_ = nullptr;
    QString legendaSerie_;
};

} // namespace stats
