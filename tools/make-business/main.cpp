// make-business FOLDER SETTINGS [SCALE]: writes the sample business into FOLDER (made when missing) and its settings file.
#include "Business.h"

#include "foundation/Folders.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s FOLDER SETTINGS [SCALE]\n", argv[0]);
        return 2;
    }
    const int scale = argc > 3 ? std::atoi(argv[3]) : 1;
    Result<void> result = scale < 1 ? Result<void>(Error {"the scale must be 1 or more"}) : folders::make(QString::fromLocal8Bit(argv[1]));
    if (result)
        result = writeBusiness(argv[1], argv[2], scale);
    if (!result)
        std::fprintf(stderr, "%s\n", result.error().message.c_str());
    return result ? 0 : 1;
}
