#pragma once

/// Seconds that this process has kept processors busy: unlike the time on the wall, they do not grow with the load that
/// others put on the machine.
double ProcessorSeconds();
