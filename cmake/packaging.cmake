# Filled in with the products.
