#include <Lum/Lum.h>

int main() { return Lum::URI("HTTP://Host/a") == "http://host/a" ? 0 : 1; }
