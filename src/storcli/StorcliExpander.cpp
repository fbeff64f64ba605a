#include "storcli/StorcliExpander.h"

#include <iostream>

void StorcliExpander::show() const
{
    std::cout << "Product ID: " << productId << std::endl;
    std::cout << "EID:        " << enclosureId << std::endl;
    std::cout << "Installed Version:" << installedVersion << std::endl;
    std::cout << "Target Version:   " << profile->targetVersion << std::endl;
}

void StorcliExpander::show_status(std::int32_t code) const
{
    switch (code) {
    case STATUS_UP_TO_DATE:
        std::cout << "Firmware version is up-to-date." << std::endl;
        break;
    case STATUS_MAIN_START:
        std::cout << "Start to download firmware image, please wait...." << std::endl;
        break;
    case STATUS_PSOC_START:
        std::cout << "Start to download PSoc firmware image, please wait..." << std::endl;
        break;
    case STATUS_SUCCESS:
        std::cout << "Image download success." << std::endl;
        break;
    case STATUS_FAIL:
        std::cout << "Image download fail." << std::endl;
        break;
    default:
        break;
    }
}
