#pragma once

#include <QString>

namespace hipico {

// Texts the system shows in more than one window, exactly as it shows them.
// One constant per text and one text per constant; a text used by a single
// window stays in that window's logic.
namespace texto {

// Titles.
inline const QString TituloValidacionSistema = QStringLiteral("Validación del Sistema");
inline const QString TituloValidacionDatos = QStringLiteral("VALIDACIÓN DE DATOS");
inline const QString TituloVerifiqueIntente = QStringLiteral("VERIFIQUE E INTENTE DE NUEVO");
inline const QString TituloVerifiqueNuevamente = QStringLiteral("Verifique e intente nuevamente");
inline const QString TituloVerificacionSistema = QStringLiteral("Verificación del Sistema");
inline const QString TituloVerifiqueProceso = QStringLiteral("VERIFIQUE EL PROCESO");
inline const QString TituloAdministracionSistema = QStringLiteral("Administración del Sistema");
inline const QString TituloAdministracionCarreras = QStringLiteral("Administración de Carreras");
inline const QString TituloCodigoBoleto = QStringLiteral("CODIGO DEL BOLETO");
inline const QString TituloMotivoAnulacion = QStringLiteral("MOTIVO DE LA ANULACIÓN DEL BOLETO ");
inline const QString TituloBusqueda = QStringLiteral(" Busqueda ");
inline const QString TituloEliminacionRegistros = QStringLiteral("Eliminacion de Registros");
inline const QString TituloParametrosVenta = QStringLiteral("PARAMETROS DE VENTA");
inline const QString TituloSeguridad = QStringLiteral("Seguridad del Sistema");
inline const QString TituloImpresionResumen = QStringLiteral("IMPRESION DE RESUME DE VENTAS");
inline const QString TituloConfirmar = QStringLiteral("confirmar");
inline const QString TituloInformacionSistema = QStringLiteral("Informacion del Sistema");

// Prompts.
inline const QString IngreseCodigoBoleto = QStringLiteral("INGRESE EL CODIGO DEL BOLETO");
inline const QString IngreseMotivo = QStringLiteral("INGRESE EL MOTIVO");
inline const QString MotivoAnulado = QStringLiteral("ANULADO");

// Choices.
inline const QString Todos = QStringLiteral("TODOS");

// Messages.
inline const QString CambiosRealizados = QStringLiteral("Los cambios se han realizado con exito");
inline const QString DatosAlmacenados = QStringLiteral("Los datos fueron almacenados satisfactoriamente");
inline const QString SinRegistros = QStringLiteral("No se encontro Ningun registro");
inline const QString SinAcceso = QStringLiteral(" Usted no posee acceso a esta parte del sistema");
inline const QString SinMotivo = QStringLiteral("No se puede realizar la operación sin un motivo");
inline const QString DebeSeleccionarHipodromo = QStringLiteral("Debe seleccionar un hipodromo");
inline const QString DebeSeleccionarGrupo = QStringLiteral("DEBE SELECCIONAR UN GRUPO");
inline const QString CarreraYaProcesadaAbrir = QStringLiteral("Esta apunto de abrir una carrera ya procesada");
inline const QString MontoNoValido = QStringLiteral("EL MONTO NO ES VALIDO");
inline const QString ValorNoValido = QStringLiteral("EL VALOR NO ES VALIDO");
inline const QString CaballoNoValido = QStringLiteral("EL NUMERO DE CABALLO NO ES VALIDO");
inline const QString CaballoNoExiste = QStringLiteral("EL NUMERO DEL CABALLO NO EXISTE PARA ESTA CARRERA");
inline const QString CaballoRetirado = QStringLiteral("EL CABALLO ESTA RETIRADO");
inline const QString CarreraNoPermitida = QStringLiteral("EL NUMERO DE CARRERA NO ESTA PERMITIDO PARA LA VENTA");
inline const QString CarreraSeEncuentraCerrada = QStringLiteral("LA CARRERA SE ENCUENTRA CERRADA");
inline const QString CarreraCerradaSinCambios = QStringLiteral("LA CARRERA ESTA CERRADA, NO SE PUEDEN HACER CAMBIOS");
inline const QString CupoLleno = QStringLiteral("SE HA LLENADO EL CUPO DE VENTA A ESTE CABALLO");
inline const QString SinSaldoCliente =
    QStringLiteral("El Cliente no posee saldo suficiente para hacer esta jugada, dispobible: ");
inline const QString MontoMayorPermitido = QStringLiteral("EL MONTO ES MAYOR AL PERMITIDO, DISPONIBLE: ");

// Tickets.
inline const QString VerifiqueNumeroBoleto = QStringLiteral("VERIFIQUE EL NUMERO DEL BOLETO");
inline const QString BoletoNoPertenece = QStringLiteral("EL BOLETO NO PERTENECE A ESTA TAQUILLA");
inline const QString BoletoNoGanador = QStringLiteral("BOLETO NO GANADOR");
inline const QString BoletoYaPagado = QStringLiteral("BOLETO YA PAGADO");
inline const QString BoletoCaducado = QStringLiteral("BOLETO CADUCADO");
inline const QString BoletoDiaAnterior =
    QStringLiteral("ATENCION ESTE BOLETO ES DE UN DIA ANTERIOR, DEBE PEDIR EL DINERO A LA ADMINISTRACION");
inline const QString BoletoNoAnulable = QStringLiteral("EL BOLETO NO SE PUEDE ANULAR");
inline const QString BoletoNoAnulableSinCodigo = QStringLiteral("EL BOLETO NO SE PUEDE ANULAR NO SE ENCUENTRA EL CODIGO");
inline const QString BoletoNoAnulableProcesada =
    QStringLiteral("EL BOLETO NO SE PUEDE ANULAR, LA CARRERA YA FUE PROCESADA");
inline const QString BoletoAnulado = QStringLiteral("BOLETO ANULADO CON EXITO");
inline const QString BoletoModificado = QStringLiteral("BOLETO MODIFICADO CON EXITO");
inline const QString TituloAnulacionMacuares = QStringLiteral("ANULACION DE MACUARES");
inline const QString ColocarCaballoValido = QStringLiteral("DEBE COLOCAR UN Nº CABALLO VALIDO");

}  // namespace texto

}  // namespace hipico
