#include "tools/formathelper/FormatCard.h"

// The format helper for tests only: files stand in for cards. It is never installed.
int main(int argc, char** argv)
{
    FormatPolicy policy;
    policy.acceptsLoopDevices = true;
    return formatHelperMain(argc, argv, policy);
}
