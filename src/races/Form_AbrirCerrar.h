#pragma once

#include "gui/Ventana.h"
#include "races/AbrirCerrarLogica.h"

#include <QColor>
#include <QVector>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QFrame;
class QGridLayout;
class QGroupBox;
class QLabel;
class QPushButton;
class QTimer;

namespace hipico {

class Context;

// Opening and closing the pools of a race: a track, a race, the pool boxes and
// the buttons; below, one indicator per race of the day on that track (winner
// bets, auction and fixed table: green open, red closed), refreshed every
// second while the window is open.
class Form_AbrirCerrar : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_AbrirCerrar(Context& ctx, QWidget* parent = nullptr);

    AbrirCerrarLogica& logica() { return logica_; }

    static const QColor kVerde;  // open
    static const QColor kRojo;   // closed

    // The indicators as shown: race label, then the colours of winner bets,
    // auction and fixed table.
    struct Marca {
        QString carrera;
        QColor ganadores, remate, tablaFija;
    };
    QVector<Marca> marcas() const;
    // Reads the flags again (what the timer does every second). A failure is
    // told once, not every second; the indicators keep their last state.
    void refrescar();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    struct Columna {
        QLabel* carrera;
        QFrame* ganadores;
        QFrame* remate;
        QFrame* tablaFija;
    };

    void construir();
    void elegirHipodromo();
    void titular();
    void pintar(const QVector<Indicador>& filas);
    Pozos pozos() const;
    int carrera() const;
    void accion(bool (AbrirCerrarLogica::*operacion)(int, const Pozos&));

    AbrirCerrarLogica logica_;
    QTimer* reloj_ = nullptr;

    QComboBox* hipodromo_ = nullptr;
    QComboBox* carrera_ = nullptr;
    QCheckBox* ganadores_ = nullptr;
    QCheckBox* remate_ = nullptr;
    QCheckBox* macuare_ = nullptr;
    QCheckBox* tablaFija_ = nullptr;
    QGroupBox* estado_ = nullptr;
    QGridLayout* rejilla_ = nullptr;
    QVector<Columna> columnas_;
};

}  // namespace hipico
