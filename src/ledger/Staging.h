#pragma once
// What an import brings in before it is written: trades for Eseguiti, money
// movements for Conto, and the rows of the source that are neither.
#include <QDate>
#include <QList>
#include <QString>

namespace ledger {

// A trade as it will go into Eseguiti.
struct EseguitoImportato {
    QDate data;
    QString tipo;   // "Buy" or "Sell", as the trade window writes it
    QString system; // the trading system the trade is booked under
    QString cod;
    QString titolo; // "ND" when the source has none
    double qta = 0;
    double prezzo = 0; // in euro, rounded to 4 decimals
    QString errore = QStringLiteral("NE");
    double prezzoOttimale = 0;
    int riga = 0; // line (text) or row (workbook) of the source, from 1
};

// A movement of money as the account window would book it by hand.
struct MovimentoImportato {
    QDate data;
    QString tipo;    // "Versamento", "Prelievo", "Dividendi" or "Costi di gestione"
    double importo = 0; // positive whatever the direction
    QString descrizione; // "." when the source has none
    int riga = 0;
};

// A row of the source that is neither a trade nor a movement, and why.
struct RigaScartata {
    int riga = 0;
    QString motivo;
};

struct Staging {
    QList<EseguitoImportato> eseguiti; // in the order they go in
    QList<MovimentoImportato> movimenti;
    QList<RigaScartata> scartate;
};

} // namespace ledger
