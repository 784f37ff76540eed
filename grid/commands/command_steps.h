#pragma once

namespace lorv {

struct GridCommand;

// Binds a command to what the grid does by itself; one that needs more stays as it is.
void BindOwnStep(GridCommand& command);

}  // namespace lorv
