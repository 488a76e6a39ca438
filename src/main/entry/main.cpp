#include "shell/App.h"

int main(int argc, char** argv) {
    return shell::run(argc, argv);
}
