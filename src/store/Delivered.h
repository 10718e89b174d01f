#pragma once
#include <QString>

namespace store {

class Database;

// Names of the files in the program folder.
inline const QString kSettingsFile = QStringLiteral("DataSet.qvd");
inline const QString kScratchPortfolio = QStringLiteral("DataExe.qvd");
inline const QString kLogoFile = QStringLiteral("logoxls.png"); // the workbook export's logo

// Schema scripts of the two databases, as delivered with the program.
QString SettingsScript();  // schema and delivered rows
QString PortfolioScript(); // schema only

// Installs the delivered files into a program folder that has no DataSet.qvd yet.
// Returns true when it did, that is on the first start of a fresh installation.
bool InstallDelivered(const QString& programFolder);

// Adds to a DataSet.qvd of an earlier version the tables it lacks; what it holds stays.
void CompletaImpostazioni(Database& dbSet);

// A new empty portfolio file with all six tables.
void CreateEmptyPortfolio(const QString& path);

} // namespace store
