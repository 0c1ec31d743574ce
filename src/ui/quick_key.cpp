#include "ui/quick_key.h"

void InstalarBusquedaRapida(QApplication &, Formularios &) {}
