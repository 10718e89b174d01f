#include "app/Module1.h"
#include "platform/FailureReport.h"

int main(int argc, char** argv)
{
    platform::Application app(argc, argv);
    return Module1::FileEsiste(QStringLiteral("/")) ? 1 : 0;
}
