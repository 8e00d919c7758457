#pragma once

#include "gui/Ventana.h"
#include "races/CarrerasLogica.h"

#include <QWidget>

class QComboBox;
class QDateEdit;
class QLineEdit;
class QPushButton;
class QTableView;

namespace hipico {

class Context;
class RecordsetModel;

// Races and horses: the day's card is entered horse by horse (or copied from
// the betting-centre server), known horse names are searched as typed, and old
// rows are cleared. The whole card can be entered from the keyboard: Enter
// moves from field to field, in the name search Enter (or Down and Enter)
// takes the name, Enter in the number box accepts the horse and the focus
// goes back to the search box for the next one.
class Form_Carreras : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_Carreras(Context& ctx, QWidget* parent = nullptr);

    CarrerasLogica& logica() { return logica_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void construir();
    void cargar();
    void aceptar();
    void buscar(const QString& texto);
    void mostrarCaballos(const QString& texto);
    void elegirCaballo(int fila);
    void tomarBusqueda();
    void eliminarCaballo();
    void verCarrera(bool conHipodromo);
    void mostrarGrilla(Recordset rs);
    void transferir();
    void eliminarCarrera();
    EntradaCaballo entrada() const;

    CarrerasLogica logica_;

    QDateEdit* fecha_ = nullptr;
    QDateEdit* fecha2_ = nullptr;
    QComboBox* hipodromo_ = nullptr;
    QComboBox* carrera_ = nullptr;
    QLineEdit* busqueda_ = nullptr;
    QTableView* lista_ = nullptr;
    RecordsetModel* modeloLista_ = nullptr;
    QLineEdit* caballo_ = nullptr;
    QLineEdit* numero_ = nullptr;
    QPushButton* aceptar_ = nullptr;
    QPushButton* eliminarCaballo_ = nullptr;
    QComboBox* verCarrera_ = nullptr;
    QTableView* grilla_ = nullptr;
    RecordsetModel* modeloGrilla_ = nullptr;
};

}  // namespace hipico
