// Controller 1 with one expander on channel 2, device 0, connector 0, held
// back by -T: the files a test writes are the tool's answers.
#pragma once

#include "arcconf/ARCCONF_UTL.h"
#include "test_support.h"

class ArcconfDeviceTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        ARCCONF_UTL::test_mode = true;
        ARCCONF_UTL::adapters.push_back(new MCHP_ADAPTER(1));
        device_ = new MCHP_DEVICE("2", "0", "expander");
        device_->adapter = ARCCONF_UTL::adapters[0];
        device_->connectorId = "0";
        ARCCONF_UTL::expanders.push_back(device_);
    }

    MCHP_DEVICE* device_ = nullptr;
};
