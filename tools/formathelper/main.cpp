#include "tools/formathelper/FormatCard.h"

int main(int argc, char** argv)
{
    return formatHelperMain(argc, argv, FormatPolicy());
}
