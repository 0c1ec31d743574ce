// The key that opens the quick find from any form.
#pragma once

class Formularios;
class QApplication;

/// CTRL+K in any window of the program opens the form frmBusquedaRapida, unless a box waits for an
/// answer.
void InstalarBusquedaRapida(QApplication &app, Formularios &formularios);
