#pragma once

#include "admin/BoletosEscritorio.h"
#include "admin/CarreraEscritorio.h"
#include "admin/CentroEscritorio.h"
#include "admin/DescargasEscritorio.h"
#include "admin/Escritorio.h"
#include "admin/GerenciaEscritorio.h"

#include "gui/Ventana.h"

#include <QMap>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSpinBox;
class QTabWidget;
class QTableView;
class QTableWidget;
class QTimer;
class QVBoxLayout;

namespace hipico {

class Context;
class PanelSubasta;
class RecordsetModel;

// Which of the winner windows a view is: the administrator's desk, or a
// manager's window on the own group or on the groups of the own subgroup.
enum class PerfilGanadores { Administracion, GerenciaGrupo, GerenciaSubgrupo };

// The winners pool administration window: the administrator's desk for the
// winner-bet game of one day. All work is done by the desk's commands, each
// given the selection the header shows; this view shows what they return.
// The managers' windows are the same desk inside the manager's scope (taken
// from the session), with the manager's tabs instead of the race's.
class Form_Admin_Win : public Ventana<QWidget> {
    Q_OBJECT
public:
    explicit Form_Admin_Win(Context& ctx, QWidget* parent = nullptr);

    // Re-reads what the window shows for the chosen date, race, centre and group.
    void refrescar();

protected:
    Form_Admin_Win(Context& ctx, PerfilGanadores perfil, const QString& nombre, QWidget* parent);

private:
    bool gerencia() const { return perfil_ != PerfilGanadores::Administracion; }
    // The sales per horse above the day's totals.
    QVBoxLayout* columnaVentas(QWidget* w);
    QWidget* construirVentasGerencia();
    QWidget* construirMensaje();
    void refrescarTaquillasVentas();
    void refrescarMensaje();
    void construirEncabezado(QWidget* panel);
    QWidget* construirCarrera();
    QWidget* construirCupos();
    QWidget* construirDividendos();
    QWidget* construirDescargas();
    QWidget* construirBoletos();
    QWidget* construirTaquillas();

    // What the header shows now: the selection every command acts on.
    Seleccion seleccion() const;
    void llenarGrupos();
    void refrescarVentas();
    void refrescarCarrera();
    void refrescarCupos();
    void refrescarRegla();
    void refrescarDescargas();
    void refrescarTaquillas();
    void mostrarProceso(const ResultadoProceso& r);
    void celdaCarrera(int fila, int columna);
    void buscar();
    long long numeroBoleto();

    PerfilGanadores perfil_;
    Alcance alcance_;            // from the session, fixed for the window's life
    OpcionesEscritorio opciones_;
    GerenciaGrupo gerencia_;
    SwitchesGerencia switches_;  // the group's switches, read on opening
    VentasCarrera ventasCarrera_;
    TarjetaCarrera tarjeta_;
    ResultadoCarrera resultado_;
    CuposCentro cupos_;
    ReglaCentro reglaCentro_;
    DescargasGrupo descargasGrupo_;
    BoletosEscritorio boletosEscritorio_;
    bool cargando_ = false;

    QDateEdit* fecha_ = nullptr;
    QComboBox* hipodromo_ = nullptr;
    QSpinBox* carrera_ = nullptr;
    QComboBox* centro_ = nullptr;
    QComboBox* grupo_ = nullptr;
    QCheckBox* auto_ = nullptr;
    QTimer* timer_ = nullptr;
    QTabWidget* pestanas_ = nullptr;
    QWidget* esquina_ = nullptr;  // the refresh controls, beside the tabs

    // Race tab.
    QListWidget* ventas_ = nullptr;
    QLabel* dia_ = nullptr;
    QTableWidget* carreraTabla_ = nullptr;
    QLineEdit* ganador_ = nullptr;
    QLineEdit* dividendo_ = nullptr;
    QLineEdit* ganador2_ = nullptr;
    QLineEdit* dividendo2_ = nullptr;
    QCheckBox* oficial_ = nullptr;
    QTableWidget* proceso_ = nullptr;
    QLineEdit* retirar_ = nullptr;
    QCheckBox* swGanadores_ = nullptr;
    QCheckBox* swRemate_ = nullptr;
    QCheckBox* swMacuare_ = nullptr;
    QCheckBox* swTablaFija_ = nullptr;
    QCheckBox* swPuestos_ = nullptr;

    // Limits tab.
    QVector<QLineEdit*> cuposCajas_;
    QLabel* avisoCupos_ = nullptr;

    // Dividend rule tab: one editor per rule column.
    QWidget* dividendos_ = nullptr;
    QMap<QString, QWidget*> regla_;
    QLabel* avisoRegla_ = nullptr;
    QTableWidget* corredores_ = nullptr;

    // Lay-offs and conditioned amounts.
    QLineEdit* descargaCaballo_ = nullptr;
    QLineEdit* descargaMonto_ = nullptr;
    QTableView* descargasTabla_ = nullptr;
    RecordsetModel* descargasModelo_ = nullptr;
    QLabel* descargasTotal_ = nullptr;
    QLineEdit* condCaballo_ = nullptr;
    QLineEdit* condMonto_ = nullptr;
    QTableView* condTabla_ = nullptr;
    RecordsetModel* condModelo_ = nullptr;

    // Tickets tab.
    QComboBox* clase_ = nullptr;
    QLineEdit* buscaCaballo_ = nullptr;
    QCheckBox* historico_ = nullptr;
    QTableView* boletos_ = nullptr;
    RecordsetModel* boletosModelo_ = nullptr;
    QLabel* boletosTotal_ = nullptr;
    QLineEdit* numero_ = nullptr;

    QSpinBox* hasta_ = nullptr;  // the manager's search: races up to

    // Booth users.
    QTableView* taquillas_ = nullptr;
    QComboBox* supervisor_ = nullptr;

    // The manager's sales per booth and booth message.
    QSpinBox* taqHasta_ = nullptr;
    QCheckBox* taqTodas_ = nullptr;
    QListWidget* taqLista_ = nullptr;
    QLineEdit* mensaje_ = nullptr;

    // The race's auction cells.
    PanelSubasta* subasta_ = nullptr;
    RecordsetModel* taquillasModelo_ = nullptr;
};

}  // namespace hipico
