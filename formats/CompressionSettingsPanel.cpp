#include "formats/CompressionSettingsPanel.h"

#include "parampanels/UIBuilderParams.h"
#include "toolkit/ui/UifStd.h"

uint16_t CompressionSettingsPanel::contentHeight(unsigned rows)
{
    const uint32_t n = rows % 65536u;
    if (n == 0)
        return 0;
    const uint32_t height = n * static_cast<uint32_t>(UifStd::getButtonHeight()) + (n - 1) * static_cast<uint32_t>(UifStd::getRowGap());
    return static_cast<uint16_t>(height);
}

CompressionSettingsPanel::InitArgs::InitArgs()
{
    border = RaisedBorder;
    standardWidgets = NoWidgets;
}

CompressionSettingsPanel::InitArgs::InitArgs(UIBuilder::ParamList parameters, configb& store, uint16_t userWidth)
    : params(std::move(parameters))
    , config(&store)
{
    border = RaisedBorder;
    standardWidgets = NoWidgets;
    palette = UifStd::getColourScheme();
    const XY<int> size = StandardPanel::calcPanelSize(userWidth, contentHeight(params.size()), *this);
    width = static_cast<uint16_t>(size.x);
    height = static_cast<uint16_t>(size.y);
}

CompressionSettingsPanel::CompressionSettingsPanel(const InitArgs& args)
    : StandardPanel(args)
    , m_config(args.config)
{
    setBorderStyle(RaisedBorder);
    setResizable(false);
    m_params = UIBuilder::build(args.params, this);
    if (m_config)
        m_params->restoreState(*m_config);
}

CompressionSettingsPanel::~CompressionSettingsPanel()
{
    if (m_config && m_params)
        m_params->saveState(*m_config);
    m_params = nullptr;
}

LightweightString<char> CompressionSettingsPanel::idstring() const { return "CompressionSettingsPanel"; }
