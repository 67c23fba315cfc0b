#include "keycounter/KeyCounterService.h"
#include "keycounter/keyboards/EvdevDevices.h"
#include "keycounter/keyboards/LoginSeats.h"

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc > 2) {
        std::fprintf(stderr, "usage: quillbrook-keycounter [FOLDER]\n");
        return 2;
    }
    quillbrook::EvdevDevices devices;
    const quillbrook::LoginSeats seats;
    return quillbrook::KeyCounterService(argc == 2 ? argv[1] : "/dev/input", devices, seats).run();
}
