#pragma once

#include "gui/Ventana.h"
#include "masterdata/Maestro.h"

#include <QWidget>
#include <functional>
#include <memory>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QTableView;

namespace hipico {

class FormularioCampos;
class RecordsetModel;

// The master-data pattern, view side: the fields of the description in
// tabs, a toolbar (Nuevo, Guardar, Buscar, Modificar, Eliminar, Cancelar),
// the listing's filter, the grid and first / previous / next / last. The
// fields stay locked until Nuevo or Modificar; Guardar writes the new record
// or the modification; after a successful command the toolbar is enabled
// again and the grid refilled. Esc cancels an edit, else closes the window.
class VentanaMaestra : public Ventana<QWidget> {
    Q_OBJECT
public:
    enum class Modo { Consulta, Nuevo, Modificando };

    VentanaMaestra(Context& ctx, QWidget* parent, std::unique_ptr<Maestro> logica);
    ~VentanaMaestra() override;

    void Nuevo_Click();
    void Guardar_Click();
    void Buscar_Click();
    void Modificar_Click();
    void Eliminar_Click();
    void Cancelar_Click();
    void Primero_Click();
    void Anterior_Click();
    void Siguiente_Click();
    void Ultimo_Click();

    Modo modo() const { return modo_; }
    QString filtroActual() const;
    // Refills the grid with the current filter's listing, the record with
    // that key chosen (else the first).
    void refrescar(const QString& clave = {});

protected:
    // A command of the window beside the standard ones, enabled like them;
    // after it succeeds the grid is refilled.
    QPushButton* agregarComando(const QString& texto, const QString& nombre, std::function<bool()> accion);
    Maestro& logicaBase() { return *logica_; }
    void teclaEscape() override;

private:
    void mostrar(const Recordset& filas, const QString& clave);
    void irA(int fila);
    void cargarFila(int fila);
    void ponerOpciones();
    void aplicarModo(Modo modo);

    std::unique_ptr<Maestro> logica_;
    Modo modo_ = Modo::Consulta;
    FormularioCampos* formulario_ = nullptr;
    RecordsetModel* modelo_ = nullptr;
    QTableView* grilla_ = nullptr;
    QComboBox* filtro_ = nullptr;
    QLabel* estado_ = nullptr;
    QHBoxLayout* acciones_ = nullptr;
    QPushButton *nuevo_, *guardar_, *buscar_, *modificar_, *eliminar_, *cancelar_;
    QList<QPushButton*> navegacion_;
    QList<QPushButton*> comandos_;
};

}  // namespace hipico
