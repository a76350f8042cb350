#pragma once

// Numbers of the component's resources; also read by the resource compiler.
#define IDB_TOOLBOX 101
