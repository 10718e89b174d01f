#pragma once
// The frame: menus, the main toolbar, the clock bar, the status bar and the
// area in which every other window opens.
#include "store/Recordset.h"

#include <QHash>
#include <QMainWindow>
#include <QVector>

#include <cstdint>
#include <functional>
#include <memory>

class BarraOrologi;
class clClock;
class QAction;
class QDateEdit;
class QLabel;
class QMdiArea;
class QTimer;
class QToolBar;

class MDIForm1 final : public QMainWindow {
    Q_OBJECT
public:
    static MDIForm1* Instance();
    // Height of the clock bar: 1000 twips at 15 twips a pixel, the room the clocks need.
    static constexpr int kAltezzaOrologi = 1000 / 15;
    MDIForm1();
    ~MDIForm1() override;

    // The frame's load, in its fixed order.
    void Load();
    // What the first activation after the load does; it runs as the frame is shown.
    void Form_Activate();

    void Colore();
    void ToolbarMenu(std::int16_t Icone32, std::int16_t IconeName);
    void RicalcolaPortafoglio();
    // Replays, sets menus and toolbar from the tables, unloads the windows that
    // lost their data and refreshes the open ones.
    void ControlloMenu();

    // The four commands on portfolio files.
    void mnu_NuovoPortafoglio_Click();
    void mnu_Apri_Click();
    void mnu_ApriUltimo_Click();
    void mnu_Salva_Click();

    // Windows that the menus and the toolbar open, by their name; each window's
    // work registers its factory (returning the global instance).
    using Factory = std::function<QWidget*()>;
    static void RegistraFinestra(const QString& name, Factory factory, bool modal = false);
    // Shows a child window (or runs a modal one); nothing for a window not yet built.
    QWidget* MostraFinestra(const QString& name);

    // Toolbar1's buttons, counted from 1 as the table counts them (3 and 9 are separators).
    QAction* Button(int index) const;
    QAction* Menu(const QString& name) const;
    QMdiArea* Area() const { return mdiArea_; }
    QToolBar* Toolbar1() const { return toolbar1_; }
    QToolBar* Toolbar3() const { return toolbar3_; }

private slots:
    void mnu_Exit_Click();
    void mnu_Help_Click();
    void mnu_Menu_Click();
    void Toolbar1_ButtonClick(QAction* button);
    void aggiornaOrologio();
    void Timer2_Timer();

private:
    void creaMenu();
    void creaToolbar();
    void creaBarraStato();
    void collegaMenu();
    QAction* voce(QMenu* menu, const QString& name, const QString& caption);
    void abilita(std::initializer_list<const char*> menus, bool on);
    void abilitaPulsanti(std::initializer_list<int> buttons, bool on);
    void scarica(std::initializer_list<const char*> windows);
    void abilitaComandiPortafoglio();
    void impostaCaption(const QString& caption);
    // The file dialog of both file commands; empty when cancelled.
    bool chiediFile(bool save, QString* fileName, QString* fileTitle);

    QMdiArea* mdiArea_ = nullptr;
    QToolBar* toolbar1_ = nullptr;
    QToolBar* toolbar3_ = nullptr;
    QDateEdit* dtp_Data_ = nullptr;
    QLabel* oraPanel_ = nullptr;
    QLabel* dataPanel_ = nullptr;
    QTimer* Timer2_ = nullptr;
    BarraOrologi* orologi_ = nullptr;
    std::unique_ptr<clClock> clock_;
    QTimer* orologio_ = nullptr;
    QVector<QAction*> buttons_; // index 0 unused
    store::Recordset rsSettaggi_;
    // The frame's own caption; the title shown gains " - [child]" while a child is maximised.
    QString caption_;
};
