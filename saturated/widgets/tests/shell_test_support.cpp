// The widget tests of this folder use the shell's test support (the
// application object, acting on modal windows, waiting with events running).
#include "shell/widgets/tests/qt_test_support.cpp"
