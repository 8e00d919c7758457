#pragma once

#include "gui/Ventana.h"
#include "sales/CuentasClientes.h"

#include <QWidget>
#include <memory>

class QRadioButton;
class QTableView;
class QThread;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;

namespace hipico {

class RecordsetModel;

// The play entry window: find a client (Enter in the search box, then Enter
// or a click on a row), or add one; record a play against the balance or a
// positive entry; list the client's movements between two dates. The
// machine's public address is looked up in the background when it opens.
class Form_IngresoJugadas : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_IngresoJugadas(Context& ctx, QWidget* parent = nullptr);
    ~Form_IngresoJugadas() override;
    IngresoJugadas& logica() { return logica_; }

    void Text_Bus2_Enter();
    void Grilla_Elegir();
    void Command4_Click();
    void Bton_Procesar_Click();
    void Command2_Click();
    void imprimirEstado();
    // Waits for the public address lookup, if one runs, and shows its result.
    void esperarIp();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void mostrarCliente();
    void mostrarClientes(const Recordset& filas);
    bool mostrarEstado(bool avisar);
    void tipoPorOmision();
    void buscarIp();
    void ipEncontrada();

    IngresoJugadas logica_;
    QLineEdit* busqueda_;
    RecordsetModel* clientes_;
    QTableView* grillaClientes_;
    QLabel* cliente_;
    QLabel* saldo_;
    QLineEdit* observacionCliente_;
    QLineEdit* usuarioCliente_;
    QCheckBox* vip_;
    QRadioButton* jugada_;
    QRadioButton* positiva_;
    QComboBox* juego_;
    QLineEdit* monto_;
    QComboBox* tipo_;
    QComboBox* banco_;
    QLineEdit* operacion_;
    QLineEdit* observacion_;
    QDateEdit* desde_;
    QDateEdit* hasta_;
    RecordsetModel* estado_;
    QLabel* ip_;
    QThread* busquedaIp_ = nullptr;
    std::shared_ptr<QString> resultadoIp_;
};

}  // namespace hipico
