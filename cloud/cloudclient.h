#pragma once

// The client of the Kelmarun Cloud REST service, held by value in the main
// window. Its calls come with the cloud work.
class CloudClient
{
public:
    CloudClient() = default;
};
