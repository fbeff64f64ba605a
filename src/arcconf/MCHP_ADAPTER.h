// A controller served by arcconf.exe, known only by its number.
#pragma once

#include <cstdint>
#include <string>

class MCHP_ADAPTER {
public:
    explicit MCHP_ADAPTER(std::uint32_t number);
    ~MCHP_ADAPTER();

    std::string adapterIndex;  // counts from 1, plain decimal
};
