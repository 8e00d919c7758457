#pragma once

#include "admin/BoletosEscritorio.h"
#include "admin/EscritorioTablaFija.h"
#include "gui/Ventana.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QTableView;
class QTableWidget;
class QTimer;

namespace hipico {

class RecordsetModel;

// The fixed-table administrator's window: for a date, track and race, the
// horses with their table price, maximum per ticket, scratching for the table
// and what was sold on each (refreshed by a timer); the pool opened and
// closed; the result processed, cleaned or the race voided; the prize of one
// table; a centre's quotas; the race's tickets searched and printed, and
// single tickets voided, paid or refunded by number, through the winners
// desk's ticket commands on the fixed-table game.
class Form_Admin_TF : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_Admin_TF(Context& ctx, QWidget* parent = nullptr);
    Seleccion seleccion() const;
    void actualizar();
    void buscar();

private:
    void construir();
    QWidget* construirBusqueda();
    // Tickets (found, or altered in the audit) in the tickets grid.
    void mostrarBoletos(const Recordset& filas);
    void celdaCambiada(int fila, int columna);
    void cargarCupos();
    long long idDeFila(int fila) const;

    EscritorioTablaFija escritorio_;
    BoletosEscritorio boletos_;
    OpcionesEscritorio opciones_;
    bool cargando_ = false;
    QDateEdit* fecha_ = nullptr;
    QComboBox* hipodromo_ = nullptr;
    QComboBox* carrera_ = nullptr;
    QTableWidget* caballos_ = nullptr;
    QLabel* estado_ = nullptr;
    QLineEdit* ganador_ = nullptr;
    QLineEdit* premio_ = nullptr;
    QComboBox* centro_ = nullptr;
    QTableWidget* cupos_ = nullptr;
    QLineEdit* numero_ = nullptr;
    QLabel* totales_ = nullptr;
    QTimer* reloj_ = nullptr;
    // Ticket search.
    QComboBox* clase_ = nullptr;
    QLineEdit* buscaCaballo_ = nullptr;
    QCheckBox* historico_ = nullptr;
    QTableView* boletosTabla_ = nullptr;
    RecordsetModel* boletosModelo_ = nullptr;
    QLabel* boletosTotal_ = nullptr;
};

}  // namespace hipico
