// A process that shows an empty window of the toolkit, paints it and ends.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.show();
    QApplication::processEvents();
    return 0;
}
