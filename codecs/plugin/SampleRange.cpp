#include "codecs/plugin/SampleRange.h"

#include "data/Dispatch.h"

namespace ET::Img::Plugin {

namespace {

/// The range of the samples that were seen; a comparison with what is no number is false.
template <class Channel>
class Range {
public:
    void Add(const Channel* samples, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            Add(samples[i]);
    }
    std::optional<SampleRange> Get() const {
        if (!m_hasAny)
            return std::nullopt;
        return SampleRange{static_cast<double>(m_minimum), static_cast<double>(m_maximum)};
    }

private:
    void Add(Channel sample) {
        if (!m_hasAny) {
            m_hasAny = sample == sample;
            m_minimum = m_maximum = sample;
        }
        if (sample < m_minimum)
            m_minimum = sample;
        if (sample > m_maximum)
            m_maximum = sample;
    }

    Channel m_minimum{};
    Channel m_maximum{};
    bool m_hasAny = false;
};

} // namespace

std::optional<SampleRange> FindSampleRange(const Quorvex::Data::ImageBase& image) {
    return Quorvex::Data::Dispatch(image.ColorType, "unknown color type", [&](auto tag) {
        using Tag = decltype(tag);
        using Channel = typename Tag::Channel;
        constexpr std::size_t channels = Tag::Traits::isColor ? 4 : 1;
        const auto lock = Tag::Traits::LockIn(image, Quorvex::Data::LockMode::ReadOnly);
        Range<Channel> range;
        // A plug-in may claim any number of rows that have no pixels.
        for (std::uint32_t y = 0; lock.Width != 0 && y < lock.Height; ++y)
            range.Add(reinterpret_cast<const Channel*>(lock.Row(y)), channels * lock.Width);
        return range.Get();
    });
}

} // namespace ET::Img::Plugin
