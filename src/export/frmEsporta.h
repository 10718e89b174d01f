#pragma once
// Export of the trade tables of the open portfolio to a workbook, a database copy or a text file.
#include "export/Esportazione.h"

#include <QDialog>

#include <cstdint>

class QCheckBox;
class QLabel;
class QProgressBar;
class QPushButton;

class frmEsporta final : public QDialog, private esporta::Avanzamento {
    Q_OBJECT
public:
    static frmEsporta* Instance();
    frmEsporta();

    void done(int result) override;

private slots:
    void chk_Click();
    void AvviaEsportazione();

private:
    // The file and the form chosen in the dialog (1 workbook, 2 database, 3 text); false when cancelled.
    bool chiediFile(QString* file, int* filtro);
    void EsportaXls(const QString& file);
    void EsportaMdb(const QString& file);
    void EsportaCsv(const QString& file);
    esporta::Scelta scelta() const;
    void abilitaPulsanti(bool on);

    // What the writers report.
    void MostraBarra(bool visibile) override;
    void Massimo(int massimo) override;
    void AvanzaProgresso() override;
    void Etichetta(esporta::Tabella tabella, const QString& testo) override;

    QCheckBox* chk_OperazioniChiuse_ = nullptr;
    QCheckBox* chk_Eseguiti_ = nullptr;
    QCheckBox* chk_Portafoglio_ = nullptr;
    QLabel* lab_Operazionichiuse_ = nullptr;
    QLabel* lab_Eseguiti_ = nullptr;
    QLabel* lab_Portafoglio_ = nullptr;
    QPushButton* cmd_Avvia_ = nullptr;
    QPushButton* cmd_Chiudi_ = nullptr;
    QProgressBar* ProgressBar1_ = nullptr;
    // Steps of the bar, never reset between tables or exports of this window.
    std::int16_t nProgresso_ = 0;
};
