#pragma once

namespace hipico {

// Keystroke filters: take the code of the key just typed and return the code
// to let through, or 0 to swallow the key. Codes are Windows-1252.
int SoloNumeros(int codigo);
int SoloNumerosComaGuion(int codigo);
int SoloNumerosComa(int codigo);
int Mayusculas(int codigo);
int SoloAlfanumerico(int codigo);

using FiltroTecla = int (*)(int);

}  // namespace hipico
