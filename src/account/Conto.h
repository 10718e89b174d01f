#pragma once
// The movements of the securities account: their types, their sum and the
// statements that write them.
#include <QDate>
#include <QString>
#include <QStringList>

#include <functional>

namespace store {
class Recordset;
}

namespace account {

// The movement types as cmb_Tipo lists them and Conto stores them.
const QStringList& TipiMovimento();

// What the windows say of a row of an unknown type.
QString TipoSconosciuto();

// The parts of the balance: withdrawals and costs are zero or negative.
struct Movimenti {
    double dividendi = 0, versamenti = 0, prelievi = 0, costi = 0;
    double saldo = 0;
};

// Walks a cursor on Conto from its first row to its end. A row whose Tipo is not
// exactly one of the four counts for nothing and calls `tipoSconosciuto` once.
Movimenti SommaMovimenti(store::Recordset& conto, const std::function<void()>& tipoSconosciuto);

// The fields of a movement as typed: the amount with its decimal comma.
struct CampiMovimento {
    QDate data;
    QString tipo, importo, descrizione;
};

// The amount goes in quoted, with a decimal point; the engine turns it into a number.
QString InsertMovimento(const CampiMovimento& c);
// Here the amount goes in bare.
QString UpdateMovimento(const CampiMovimento& c, long long id);

} // namespace account
