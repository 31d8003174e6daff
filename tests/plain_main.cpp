#include "subject.h"

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    return quenchly::testing::runSubject(argc, argv);
}
