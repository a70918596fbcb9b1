#include "tests/repair_rules/plain_rules.h"

namespace tarvik::test {

namespace {

/// One pass over a chain.
struct Pass {
    const Text& model;
    const Text& repairs;
    std::vector<PlainHit> hits{};

    bool m(std::u32string_view text) const { return model.find(text) != Text::npos; }
    bool w(std::u32string_view text) const { return repairs.find(text) != Text::npos; }
    void part(bool fires, std::u32string_view code, double quantity = 1)
    {
        if (fires) hits.push_back({Text(code), quantity});
    }

    void interface_card()
    {
        part(m(U"百兆光口接口卡-FM-H1FE-S") && w(U"换光模块"), U"30003358");
        part(m(U"百兆光口接口卡-FM-H1FE-S") && w(U"换以太网转换芯片"), U"30000803");
    }

    void fans_and_chips()
    {
        part(m(U"ME-") && w(U"风扇"), U"30007309", 4);
        part(m(U"ME-") && m(U"8") && w(U"风扇"), U"30007309", 3);
        part(m(U"08ME-") && w(U"换以太网转换芯片"), U"30000814");
        part(m(U"16ME-") && w(U"换以太网转换芯片"), U"30000816");
        part(m(U"24ME-") && w(U"换以太网转换芯片"), U"30000818");
        part(m(U"ME-AC") && w(U"换电源"), U"30005556");
        part(m(U"ME-DC") && w(U"换电源"), U"30005552");
        part(m(U"16ME-PAF-AC") && w(U"换电源"), U"30003409");
    }

    void processors_and_boards()
    {
        part(m(U"08ME-PAF-AC") && w(U"换电源"), U"30003408");
        part(m(U"ME") && w(U"换cpu"), U"30001389");
        part(m(U"08ME-PAF-AC") && w(U"更换主板"), U"20000736");
        part(m(U"16ME-PAF-AC") && w(U"更换主板"), U"20000738");
        part(m(U"24ME-PAF-AC") && w(U"更换主板"), U"20000389");
    }

    void transceivers()
    {
        part(m(U"-48") && w(U"换电源"), U"30003418");
        part(m(U"-220") && w(U"换电源"), U"30003401");
        part(m(U"-220") && m(U"-F2") && w(U"换电源"), U"30003404");
        if (w(U"换以太网转换芯片")) {
            if (m(U"5B-")) {
                part(true, U"30000905");
            } else {
                part(m(U"OL"), U"30000872");
                part(m(U"F2-"), U"30000873");
            }
        }
        part(w(U"换复位芯片"), U"30000881");
        part(m(U"-02B-") && w(U"换光模块"), U"30003359");
        part(m(U"-22B-") && w(U"换光模块"), U"30003350");
        part(m(U"-12B-") && w(U"换光模块"), U"30003340");
    }

    void converters()
    {
        part(m(U"OM-") && w(U"硬件改版"), U"30008034");
        part(m(U"35E1-") && w(U"硬件改版"), U"30000598");
        part(m(U"E1FX-") && w(U"硬件改版"), U"30000558");
        part(m(U"-E1OM-") && w(U"数据芯片"), U"30000863");
        part(m(U"-V35OM-") && w(U"数据芯片"), U"30001240");
        part(m(U"-B2101-") && w(U"换直键"), U"30003605");
        part(m(U"-B2101-") && w(U"换同轴"), U"30005112");
        part(m(U"-B2101-E18TX") && w(U"换以太网转换芯片"), U"30000889");
        part(m(U"-B2101-E1TX") && w(U"换以太网转换芯片"), U"30000803");
        part(m(U"-FC-20-35-") && w(U"光模块"), U"30003296");
        part(m(U"-SC-20-35-") && w(U"光模块"), U"30003239");
        part(m(U"-SC-20-53-") && w(U"光模块"), U"30003249");
        part(m(U"-SC-20-3-") && w(U"光模块"), U"30003258");
        part(m(U"-FC-20-3-") && w(U"光模块"), U"30003229");
        part(m(U"-B2101-") && w(U"换保险"), U"30005129");
        part(m(U"-B2101-") && m(U"-220") && w(U"电源"), U"30004639");
        part(m(U"-B2101-") && m(U"-48") && w(U"电源"), U"30003430");
        part(m(U"-B2104-") && w(U"换电源"), U"30004555");
        part(m(U"-B2104-") && w(U"更换机壳"), U"30005580");
        part(m(U"-B2104-") && w(U"换接插件"), U"30004820");
        part(m(U"-B2108-") && w(U"换电源"), U"30004555");
        part(m(U"-MSOM-") && w(U"换电源"), U"30004572");
    }

    void switches_of_the_update_chain()
    {
        part(m(U"-S2008MF-B") && w(U"换电源"), U"30003414");
        part(m(U"-S2108MF") && w(U"换电源"), U"30003414");
        part(m(U"-S2116MF") && w(U"换电源"), U"30003420");
        part(m(U"-S2124MF") && w(U"换电源"), U"30003420");
        part(m(U"-S2116MF") && w(U"换以太网转换芯片"), U"30000792");
        part(m(U"-S2108MF") && w(U"换以太网转换芯片"), U"30000792");
        part(m(U"-S2124MF") && w(U"换以太网转换芯片"), U"30000792");
        part(m(U"-S2008M-A") && w(U"换电源"), U"30003413");
        part(m(U"-S2016M-A") && w(U"换电源"), U"30003413");
        part(m(U"-S2024M-A") && w(U"换电源"), U"30003420");
        part(m(U"-S2016MF-B") && w(U"换电源"), U"30003420");
        part(m(U"-S2008MF-B") && w(U"换主板"), U"20000461");
        part(m(U"-S2016MF-B") && w(U"换主板"), U"20000469");
        part(m(U"-S2024MF-B") && w(U"换主板"), U"20000475");
        part(m(U"-S2024MF-B") && w(U"换电源"), U"30003420");
        part(m(U"-S2024MF-B") && w(U"换以太网转换芯片"), U"30000819");
        part(m(U"S2024M-A") && w(U"灯板"), U"20000473");
        part(m(U"-S2024MF-B") && w(U"灯板"), U"20000473");
        part(m(U"-S2016MF-B") && w(U"换以太网转换芯片"), U"30000817");
        part(m(U"-S2016MF-B") && w(U"灯板"), U"20000468");
        part(m(U"-S2008MF-B") && w(U"换以太网转换芯片"), U"30000815");
        part(m(U"S2226A") && w(U"换电源"), U"30003420");
        part(m(U"S2226A") && w(U"主板"), U"20000475");
        part(m(U"S2226A") && w(U"灯板"), U"20000473");
        part(m(U"S2226A") && w(U"cpu"), U"30005715");
        part(m(U"S2226A") && w(U"换以太网转换芯片"), U"30000819");
        part(m(U"MF-B") && w(U"换cpu芯片"), U"30005715");
        part(m(U"-48") && w(U"换电源"), U"30003427");
        part(m(U"MF-B") && w(U"换数据缓存芯片"), U"30000966");
    }

    void switches_of_the_first_entry()
    {
        part(m(U"S2016M-A-220") && w(U"换以太网转换芯片"), U"30000792");
        part(m(U"S2024M-A-220") && w(U"换以太网转换芯片"), U"30000792");
        part(m(U"S2016M-A-220") && w(U"换电源"), U"30003413");
        part(m(U"S2108MF") && w(U"换电源"), U"30003414");
        part(m(U"S2116MF") && w(U"换电源"), U"30003420");
        part(m(U"S2226A") && w(U"换电源"), U"30003420");
        part(m(U"S2226A") && w(U"主板"), U"20000475");
        part(m(U"S2226A") && w(U"灯板"), U"20000473");
        part(m(U"S2024M-A") && w(U"灯板"), U"20000473");
        part(m(U"S2226A") && w(U"cpu"), U"30005715");
        part(m(U"S2226A") && w(U"换以太网转换芯片"), U"30000819");
        part(m(U"-S2116MF") && w(U"换以太网转换芯片"), U"30000792");
        part(m(U"-S2108MF") && w(U"换以太网转换芯片"), U"30000792");
        part(m(U"-S2124MF") && w(U"换以太网转换芯片"), U"30000792");
        part(m(U"S2124MF") && w(U"换电源"), U"30003420");
        part(m(U"S2008M-A") && w(U"换电源"), U"30003413");
        part(m(U"S2024M-A") && w(U"换电源"), U"30003420");
        part(m(U"-S2008MF-B") && w(U"换电源"), U"30003414");
        part(m(U"-S2016MF-B") && w(U"换电源"), U"30003420");
        part(m(U"-S2024MF-B") && m(U"-220") && w(U"换电源"), U"30003420");
        part(m(U"-48") && w(U"换电源"), U"30003427");
        part(m(U"-S2024MF-B") && w(U"换以太网转换芯片"), U"30000819");
        part(m(U"-S2024MF-B") && w(U"灯板"), U"20000473");
        part(m(U"-S2016MF-B") && w(U"换以太网转换芯片"), U"30000817");
        part(m(U"-S2016MF-B") && w(U"灯板"), U"20000468");
        part(m(U"-S2008MF-B") && w(U"换主板"), U"20000461");
        part(m(U"-S2016MF-B") && w(U"换主板"), U"20000469");
        part(m(U"-S2024MF-B") && w(U"换主板"), U"20000475");
        part(m(U"-S2008MF-B") && w(U"换以太网转换芯片"), U"30000815");
        part(m(U"MF-B") && w(U"换cpu芯片"), U"30005715");
        part(m(U"MF-B") && w(U"换数据缓存芯片 "), U"30000966");
    }
};

} // namespace

std::vector<PlainHit> plain_update_hits(const Text& model, const Text& repairs)
{
    Pass pass{model, repairs};
    if (pass.m(U"ME")) {
        pass.fans_and_chips();
        pass.part(pass.m(U"24ME-PAF-AC") && pass.w(U"换电源"), U"30003409");
        pass.part(pass.m(U"ME-PAF-AC") && pass.w(U"变压器"), U"30002937");
        pass.processors_and_boards();
    }
    pass.interface_card();
    if (pass.m(U"交换机")) pass.switches_of_the_update_chain();
    if (pass.m(U"收发器")) pass.transceivers();
    if (pass.m(U"转换器")) pass.converters();
    return pass.hits;
}

std::vector<PlainHit> plain_first_hits(const Text& model, const Text& repairs)
{
    Pass pass{model, repairs};
    pass.interface_card();
    if (pass.m(U"交换机")) {
        if (pass.m(U"电信级以太网交换机")) {
            pass.fans_and_chips();
            pass.part(pass.m(U"ME-PAF-AC") && pass.w(U"变压器"), U"30002937");
            pass.part(pass.m(U"24ME-PAF-AC") && pass.w(U"换电源"), U"30003409");
            pass.processors_and_boards();
        }
        pass.switches_of_the_first_entry();
    }
    if (pass.m(U"收发器")) pass.transceivers();
    if (pass.m(U"转换器")) pass.converters();
    return pass.hits;
}

} // namespace tarvik::test
