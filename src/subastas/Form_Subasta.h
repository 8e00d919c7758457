#pragma once

#include "gui/Ventana.h"
#include "subastas/Subasta.h"

#include <QVector>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

namespace hipico {

class Context;

// The auction board: one view for every board layout. A track and a race
// are chosen and loaded; the board shows 14 horse lines with a buyer and an
// amount box per table of the shown auction (big board or small board), the
// house table, the scratch box and the line number that invalidates the
// line's sale; under each table its total, commission and prize; the pot,
// the house's figures, the pot and percentage commands, the printed pieces
// and the group's message line. Each box is written when it is left; every
// second the board reads what other machines changed.
class Form_Subasta : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_Subasta(Context& ctx, const DisenoSubasta& diseno, QWidget* parent = nullptr);

    Subasta& logica() { return logica_; }
    // Loads the race chosen in the header (the shown auction).
    void cargar();
    // What the timer does every second.
    void refrescar();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    struct Celdas {
        QPushButton* numero = nullptr;
        QLabel* caballo = nullptr;
        QCheckBox* retirado = nullptr;
        QVector<QLineEdit*> mesas;
        QVector<QLineEdit*> montos;
        QLineEdit* casa = nullptr;
        QLabel* estado = nullptr;
    };
    struct Totales {
        QLabel* total = nullptr;
        QLabel* comision = nullptr;
        QLabel* premio = nullptr;
        QLabel* aGanar = nullptr;  // "(1) a ganar :" on the boards that name each table's prize
    };

    void construir();
    QWidget* construirTablero();
    QWidget* construirComandos();
    void encabezarTablas();
    void elegirHipodromo();
    void mostrarLado(bool tablita);
    // Shows what the engine holds; a box being typed into keeps its text.
    void pintar();
    void limpiar();
    // A box left: writes it when it was changed.
    void dejarCaja(QLineEdit* caja, const std::function<bool(const QString&)>& escribir);
    void comando(const std::function<bool()>& fn);

    Subasta logica_;
    QTimer* reloj_ = nullptr;

    QComboBox* hipodromo_ = nullptr;
    QComboBox* carrera_ = nullptr;
    QPushButton* tg_ = nullptr;
    QPushButton* tp_ = nullptr;
    QLabel* estado_ = nullptr;
    QLabel* porcentaje_ = nullptr;
    QVector<QLabel*> encabezados_;
    QLabel* cabCasa_ = nullptr;
    QVector<Celdas> lineas_;
    QVector<Totales> totales_;
    QLineEdit* pote_ = nullptr;
    QLabel* casaJugado_ = nullptr;
    QLabel* casaGanado_ = nullptr;
    QLabel* mensaje_ = nullptr;
    QLineEdit* textoMensaje_ = nullptr;
    QPushButton* enviar_ = nullptr;
    QVector<QWidget*> escritura_;   // what a read-only board disables
    QVector<QWidget*> conCarrera_;  // the commands on a loaded race (none for "Socio")
};

}  // namespace hipico
