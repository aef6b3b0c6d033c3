// The recording program: every case linked in, one line each, in registration order.
// Built with MinGW by record.sh and run under Wine.
#include "../recorded.h"

int main(int argc, char** argv) {
    for (const recorded::Case& c : recorded::Registry()) {
        if (argc > 1 && std::strcmp(argv[1], c.group) != 0) continue;
        std::printf("%s\n", recorded::Run(c).c_str());
    }
    return 0;
}
