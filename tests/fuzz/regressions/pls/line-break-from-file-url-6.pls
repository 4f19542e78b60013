[play=
File2=file://€€€€€€€€€€€€€€€le2=file://€€€€€€€€€€€€€€€€€€€€€€€€€€/tmp/%21le%20lead%0Abreak.5 ïead%0Abreak.pm3
File3= ï»¿b3
giÿÿÿÿle3= %