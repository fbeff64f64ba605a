#include "arcconf/MCHP_ADAPTER.h"

#include "diagnostics/log.h"

MCHP_ADAPTER::MCHP_ADAPTER(std::uint32_t number) : adapterIndex(std::to_string(number))
{
}

MCHP_ADAPTER::~MCHP_ADAPTER()
{
    logBegin("MCHP_ADAPTER::~MCHP_ADAPTER");
    logEnd("MCHP_ADAPTER::~MCHP_ADAPTER");
}
