#pragma once

namespace zn::headless {

/// The canonical haemodynamic response to a brief event at time 0, a difference of two gamma densities:
///
///   h(t) = c (t^5 e^-t / 5!  -  1/6 t^15 e^-t / 15!)     for 0 < t < 32 s, otherwise 0
///
/// Delay of the response 6 s and of the undershoot 16 s, dispersion 1 s for both, ratio 6 to 1, length 32 s; the factor
/// c makes the area 1. Friston et al. (1998), NeuroImage 7, 30-40; Glover (1999), NeuroImage 9, 416-429.
///
///   seconds   time since the event
///   result    per second
double response(double seconds);

/// The integral of response() from 0 to `seconds`: the response to a state that began at time 0 and lasts. It rises
/// from 0, overshoots, and is 1 from 32 s on.
double stepResponse(double seconds);

} // namespace zn::headless
